// Noise reduction: lowers what is not louder than a learned noise, in each of the bins of a short
// transform, smoothed over time and frequency.
#pragma once

#include "effects/noise_profile.h"
#include "effects/range_effect.h"

namespace sonavel {

inline constexpr int kMostNoiseSmoothing = 12;  // bins to either side

// Values: the reduction in dB, the bins to either side over which is smoothed, 0 or 1 to keep what
// goes instead of what stays. Fails where no noise was learned, or at another rate.
Outcome ReduceNoise(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
