#include "spatial/scene_mix.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

#include "libraries/resampler.h"
#include "platform/failure_texts.h"
#include "sound/pair_buffer.h"
#include "sound/sample_io.h"
#include "spatial/fitting.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kMostFrames = kMaxSoundBytes / 4;
constexpr float kFullScale = 32768;
constexpr std::string_view kTooLong = "The scene is too long to become a stereo sound.";

// Channel 0 as 32-bit floats at another rate.
Result<Sound> AtRate(const Sound& sound, std::uint32_t rate) {
    constexpr std::uint32_t kPiece = 65536;
    Resampler resampler(1, sound.GetSamplesPerSecond(), rate);
    std::vector<float> resampled;
    std::vector<float> piece;
    const float scale = (sound.GetBits() == 8 ? kEightBitScale : 1) / kFullScale;
    for (std::uint32_t first = 0; first < sound.GetFrameCount(); first += kPiece) {
        piece.resize(std::min(kPiece, sound.GetFrameCount() - first));
        ReadChannel(sound, 0, first, piece, EightBitReading::kFull);
        for (float& value : piece) value *= scale;
        if (!resampler.Add(piece, resampled)) return Failed(failure::kMemory);
    }
    if (!resampler.Finish(resampled)) return Failed(failure::kMemory);
    Sound result;
    if (resampled.size() > kMostFrames) return Failed(kTooLong);
    const auto frames = static_cast<std::uint32_t>(resampled.size());
    if (!result.Create(1, 32, rate, frames)) return Failed(failure::kMemory);
    for (float& value : resampled) value *= kFullScale;
    WriteInterleaved(result, 0, resampled);
    return result;
}

}  // namespace

Outcome SceneMix::Render(const ScenePart& part, const Sound& sound, std::span<float> pairs) {
    const RangeInput input{sound, {0, sound.GetFrameCount()}};
    const auto renderer = MakeRenderer(part.placing, input, listener_);
    if (!renderer) return renderer.Ended();
    const auto progress =
        progress_.CreateProgress("Progress of Sound " + std::to_string(parts_ + 1));
    const RenderedBlocks rendered = RenderBlocks(**renderer, rate_, pairs, *progress);
    return rendered.end == RenderEnd::kWhole ? Done() : Cancelled();
}

Outcome SceneMix::AddAtRate(const ScenePart& part, const Sound& sound) {
    const std::uint64_t end = std::uint64_t{part.start} + sound.GetFrameCount();
    if (end > kMostFrames) return Failed(kTooLong);
    PairBuffer rendered(sound.GetFrameCount());
    if (!rendered.HasMemory()) return Failed(failure::kMemory);
    if (pairs_.size() < 2 * end) pairs_.resize(2 * end);
    if (Outcome outcome = Render(part, sound, rendered.Pairs()); !outcome) return outcome;
    const float scale = sound.GetBits() == 8 ? kEightBitScale : 1;
    const auto gain = static_cast<float>(scale * std::pow(10, part.gain / 20));
    float* to = pairs_.data() + std::size_t{2} * part.start;
    for (const float value : rendered.Pairs()) *to++ += gain * value;
    ++parts_;
    return Done();
}

Outcome SceneMix::Add(const ScenePart& part) try {
    if (part.sound.GetFrameCount() == 0) return Failed("The sound is empty.");
    const bool hasFloats = part.sound.GetBits() == 32;
    Outcome added = Done();
    if (part.sound.GetSamplesPerSecond() == rate_) {
        added = AddAtRate(part, part.sound);
    } else {
        const Result<Sound> resampled = AtRate(part.sound, rate_);
        added = resampled ? AddAtRate(part, *resampled) : resampled.Ended();
    }
    if (added && hasFloats) hasFloats_ = true;
    return added;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<Sound> SceneMix::Finish() {
    Sound sound;
    const auto frames = static_cast<std::uint32_t>(pairs_.size() / 2);
    if (!sound.Create(2, hasFloats_ ? 32 : 16, rate_, frames)) return Failed(failure::kMemory);
    Fitting(PeakOf(pairs_), 16).Fit(pairs_);
    WriteInterleaved(sound, 0, pairs_);
    pairs_.clear();
    return sound;
}

}  // namespace sonavel
