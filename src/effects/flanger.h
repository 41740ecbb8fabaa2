// Flanger: each sample mixed with a copy whose delay sweeps up and down.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sonavel {

struct FlangerParameters {
    int delayTenths = 1;       // of a millisecond, 0 to 150
    int modulationTenths = 1;  // of a hertz, 0 to 100
};

// A delay between two whole frames: `whole` of them and a fraction.
struct FlangerDelay {
    std::uint32_t whole;
    float fraction;
};

// The swept delay of each frame of a run, the same for both channels.
class FlangerSweep {
  public:
    FlangerSweep(const FlangerParameters& parameters, std::uint32_t samplesPerSecond);

    std::uint32_t MaxDelay() const { return maxDelay_; }  // frames
    // The delays, from 0 to MaxDelay(), of the frames firstFrame, firstFrame + 1, ...
    void Delays(std::uint32_t firstFrame, std::span<FlangerDelay> delays) const;

  private:
    std::uint32_t maxDelay_;
    double radiansPerFrame_;
};

// The delay line of one channel, silent at the start of a run.
class FlangerChannel {
  public:
    explicit FlangerChannel(std::uint32_t maxDelay);

    // In place; `delays` holds one value for each sample.
    void Process(std::span<const FlangerDelay> delays, std::span<float> samples);

  private:
    std::uint32_t maxDelay_;
    std::vector<float> line_;  // the last maxDelay + 1 inputs, then the piece's own
};

}  // namespace sonavel
