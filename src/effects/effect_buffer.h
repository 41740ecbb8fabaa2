// CEffectBuffer: the floating-point work buffer of an effect run. A run loads, processes and stores
// a long range in pieces, so that the buffer stays in the processor's cache.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "effects/effect_range.h"
#include "sound/wave.h"

namespace sonavel {

// The frames of one piece of a run.
inline constexpr std::uint32_t kMaxPieceFrames = 4096;

class CEffectBuffer {
  public:
    // Room for up to `maxFrames` frames of a sound of this format.
    CEffectBuffer(const CWave& sound, std::uint32_t maxFrames);

    // Reads a range of at most maxFrames frames; an 8-bit value of +128 wraps to -128.
    void Load(const CWave& sound, EffectRange range);
    // Writes the range back through the quantizer, which the buffer holds the results of then.
    void Store(CWave& sound);

    std::uint32_t SampleRate() const { return sampleRate_; }
    unsigned BitsPerSample() const { return bitsPerSample_; }
    unsigned Channels() const { return channels_; }
    std::uint32_t FrameCount() const { return range_.length; }
    std::uint32_t TotalSamples() const { return range_.length * channels_; }
    std::span<float> Left() { return {left_.data(), range_.length}; }
    std::span<float> Right() { return {right_.data(), channels_ == 2 ? range_.length : 0u}; }

  private:
    std::uint32_t sampleRate_;
    unsigned bitsPerSample_;
    unsigned channels_;
    EffectRange range_;
    std::vector<float> left_;
    std::vector<float> right_;
};

// Loads, processes and stores the range piece by piece. `process(buffer, done)` gets the frames
// done before; `done` runs from 0 to the range's length.
template <class Process>
void ForEachPiece(CWave& sound, EffectRange range, const Process& process) {
    CEffectBuffer buffer(sound, kMaxPieceFrames);
    for (std::uint32_t done = 0; done < range.length; done += kMaxPieceFrames) {
        const std::uint32_t frames = std::min(range.length - done, kMaxPieceFrames);
        buffer.Load(sound, {range.start + done, frames});
        process(buffer, done);
        buffer.Store(sound);
    }
}

}  // namespace sonavel
