// Flanger: each frame mixed with a copy whose delay sweeps up and down.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>

#include "effects/delay_filters.h"

namespace sonavel {

struct FlangerParameters {
    int delayTenths = 1;       // of a millisecond, 0 to 150
    int modulationTenths = 1;  // of a hertz, 0 to 100
};

// The greatest delay of the sweep, in frames.
std::uint32_t FlangerMaxDelay(const FlangerParameters& parameters, std::uint32_t samplesPerSecond);

// Delays between two whole frames, one for each frame of a piece.
struct FlangerDelays {
    static constexpr std::size_t kMostFrames = 4096;

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

// The past frames of a run, silent at its start, as pairs of left and right.
class FlangerLine {
  public:
    // `runFrames`: how many frames will be mixed at most. A longer delay reads silence only and
    // takes no memory, whatever rate a file claims.
    explicit FlangerLine(std::uint32_t maxDelay,
                         std::uint32_t runFrames = std::numeric_limits<std::uint32_t>::max());

    // Where to put the pairs of the next frames, to be mixed then.
    std::span<float> NextPairs(std::size_t frames);
    // Mixes them into `pairs`; `delays` holds one delay for each of the frames.
    void Mix(const FlangerDelays& delays, std::span<float> pairs);

  private:
    std::size_t longest_;  // frames that a delay reaches back, as far as it matters
    DelayLine line_;
    float* next_ = nullptr;
};

}  // namespace sonavel
