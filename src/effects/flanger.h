// Flanger: each frame mixed with a copy whose delay sweeps up and down.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "effects/effect_processor.h"

namespace sonavel {

struct FlangerParameters {
    int delayTenths = 1;       // of a millisecond, 0 to 150
    int modulationTenths = 1;  // of a hertz, 0 to 100
};

// The greatest delay of the sweep, in frames.
std::uint32_t FlangerMaxDelay(const FlangerParameters& parameters, std::uint32_t samplesPerSecond);

// Delays between two whole frames, one for each frame of a piece.
struct FlangerDelays {
    static constexpr std::size_t kMostFrames = kPieceFrames;

    std::array<std::uint32_t, kMostFrames> whole;  // frames
    std::array<float, kMostFrames> fraction;
};

// The swept delay of each frame of a run, the same for both channels.
class FlangerSweep {
  public:
    FlangerSweep(const FlangerParameters& parameters, std::uint32_t samplesPerSecond);

    // The delays, from 0 to FlangerMaxDelay(), of at most kMostFrames frames from firstFrame on.
    void Delays(std::uint32_t firstFrame, std::size_t frames, FlangerDelays& delays) const;

  private:
    static constexpr std::size_t kBlockFrames = 256;

    double middle_;  // of the delays
    double radiansPerFrame_;
    // Of the angles of the first frames of a run; those of later blocks are turned from there.
    std::array<double, kBlockFrames> cosines_;
    std::array<double, kBlockFrames> sines_;
};

// Values: the greatest delay in ms and the sweeps a second, both of one decimal.
std::unique_ptr<EffectProcessor> MakeFlanger(std::span<const double> values, const EffectRun& run);

}  // namespace sonavel
