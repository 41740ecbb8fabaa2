// Reverberation of one channel: early reflections, six damped combs in parallel, and four
// all-passes in series for long reverberation times (the structure of M. R. Schroeder's and J. A.
// Moorer's rooms).
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "effects/delay_filters.h"
#include "effects/effect_processor.h"
#include "effects/reverb_taps.h"

namespace sonavel {

class ReverbChannel {
  public:
    static constexpr std::uint32_t kPieceFrames = 1024;
    // At the end of each block the early reflections that reach into the next change their sign.
    static constexpr std::uint32_t kBlockFrames = 32 * kPieceFrames;

    // `runFrames`: how many frames will be processed at most. What is delayed beyond them is never
    // heard and takes no memory, whatever rate a file claims.
    ReverbChannel(const ReverbParameters& parameters, std::uint32_t samplesPerSecond,
                  std::uint32_t runFrames = std::numeric_limits<std::uint32_t>::max());

    // The next dry samples, replaced by the mixture.
    void Process(std::span<float> samples);

  private:
    using Piece = std::array<float, kPieceFrames>;

    void ProcessPiece(std::span<float> piece);
    void AddEarly(const float* dry, std::span<float> reverb) const;
    void AddTaps(const float* dry, std::uint32_t blocksAgo, std::span<float> reverb) const;
    void AddLate(const float* dry, std::span<float> reverb);

    ReverbTaps taps_;
    float dryShare_;
    float wetShare_;
    std::vector<DampedComb> combs_;
    std::vector<AllPass> allPasses_;
    DelayLine dry_;
    DelayLine late_;
    std::uint32_t placeInBlock_ = 0;
};

// Values: early reflections and late reverberation in ms, how many reflections, dry and wet
// percent.
std::unique_ptr<EffectProcessor> MakeReverb(std::span<const double> values, const EffectRun& run);

// The damping class of a reverberation time: 0, 1 or 2.
int DampingClass(int timeMs);

}  // namespace sonavel
