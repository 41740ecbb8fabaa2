// Fades over a range, from silence or to it.
#pragma once

#include <cstdint>

#include "effects/range_effect.h"

namespace sonavel {

// Linear; the raised cosine; evenly in decibels over the 60 above silence.
enum class FadeCurve { kLinear, kSmooth, kLogarithmic };

// The factor at a share of the way from silence, 0 to 1: 0 at its start, 1 at its end.
double FadeGain(FadeCurve curve, double share);

// Values: the curve. The first frame is silent and the last one as it was, or the other way round.
Outcome FadeIn(const RangeWork& work, RangeSink& sink);
Outcome FadeOut(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
