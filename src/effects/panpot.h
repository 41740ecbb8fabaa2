// Panpot and crossfade: one channel of a stereo sound is lowered, by a fixed or a moving position.
#pragma once

#include <cstdint>
#include <span>

#include "effects/effect_buffer.h"

namespace sonavel {

enum class PanMode { kPan = 0, kCrossfade = 1 };
enum class CrossfadeLaw { kLinear, kExponential };

struct PanpotParameters {
    PanMode mode = PanMode::kPan;
    int pan = 0;   // -1000 (left) to 1000 (right)
    int from = 0;  // crossfade start, likewise
    int to = 0;    // crossfade end
    CrossfadeLaw law = CrossfadeLaw::kLinear;
};

// Runs over the pieces of one range in order.
class Panpot {
  public:
    Panpot(const PanpotParameters& parameters, std::uint32_t rangeFrames);

    // Both spans hold the same number of frames, at most kMaxPieceFrames.
    void Process(std::span<float> left, std::span<float> right);

  private:
    void Pan(std::span<float> left, std::span<float> right) const;
    void Crossfade(std::span<float> left, std::span<float> right);

    PanpotParameters parameters_;
    float position_;  // -100 to 100
    float step_;
};

}  // namespace sonavel
