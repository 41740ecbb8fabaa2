// Normalise: one gain that brings a range to a peak, or to a loudness below a ceiling.
#pragma once

#include <array>

#include "effects/range_effect.h"

namespace sonavel {

enum class NormaliseTo { kPeak, kLoudness };
enum class NormaliseChannels { kTogether, kEach };

struct NormaliseParameters {
    NormaliseTo to = NormaliseTo::kPeak;
    double peakDecibels = -1;  // of full scale; of the true peak where it is a ceiling
    double loudness = -16;     // LUFS
    NormaliseChannels channels = NormaliseChannels::kTogether;  // of kPeak
};

// The greatest magnitude of each channel, as a share of full scale.
std::array<double, 2> PeaksOfChannels(const Sound& sound, FrameRange range);

// The factor for each channel. Fails where there is nothing to measure: silence, or for the
// loudness less than 0.4 s or pauses alone. Where the ceiling would be passed the whole becomes
// quieter than asked.
Result<std::array<double, 2>> NormaliseGains(const RangeWork& work,
                                             const NormaliseParameters& parameters);

// Values: 0 peak or 1 loudness, peak, loudness, 0 together or 1 each.
Outcome Normalise(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
