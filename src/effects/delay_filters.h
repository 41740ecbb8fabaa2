// The delay lines of the late reverberation: damped feedback combs and all-passes. Both run over
// pieces no longer than their delay, so that every loop reads only what lies behind it and
// vectorises.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace sonavel {

// A line of past values followed by the piece being worked on.
class DelayLine {
  public:
    // `reach`: how many past values stay readable; they are silent to begin with.
    explicit DelayLine(std::size_t reach) : reach_(reach), end_(reach), values_(reach) {}

    // Makes room for a piece and returns its place; place[-1] is the newest past value.
    float* Extend(std::size_t frames);
    // Makes as many frames of it part of the past.
    void Keep(std::size_t frames) { end_ += frames; }

  private:
    std::size_t reach_;
    std::size_t end_;  // of the past
    std::vector<float> values_;
};

class DampedComb {
  public:
    static constexpr int kTaps = 8;
    using Taps = std::array<float, kTaps>;

    // `taps` filter the delayed value, newest first, on its way back; `gain` scales what comes
    // back.
    DampedComb(std::uint32_t delayFrames, const Taps& taps, float gain);

    // Adds the comb's output, the delayed value, to `sum`.
    void Process(std::span<const float> input, std::span<float> sum);

  private:
    void ProcessPiece(const float* input, float* sum, std::size_t frames);

    std::size_t delay_;
    Taps taps_;
    float gain_;
    DelayLine line_;
};

class AllPass {
  public:
    AllPass(std::uint32_t delayFrames, float gain);

    void Process(std::span<float> samples);  // in place

  private:
    std::size_t delay_;
    float gain_;
    DelayLine line_;
};

}  // namespace sonavel
