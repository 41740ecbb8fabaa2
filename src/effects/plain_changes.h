// What is done to a range without any setting.
#pragma once

#include "effects/range_effect.h"

namespace sonavel {

Outcome Mute(const RangeWork& work, RangeSink& sink);
// Every sample's sign; the least whole number, which has no counterpart, becomes the greatest.
Outcome Invert(const RangeWork& work, RangeSink& sink);
// Takes from each channel the mean of its range.
Outcome RemoveOffset(const RangeWork& work, RangeSink& sink);
// The last frame first. Markers stay where they are.
Outcome Reverse(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
