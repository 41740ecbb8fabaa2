// Echo: copies of the sound, each later and quieter than the one before.
#pragma once

#include "effects/range_effect.h"

namespace sonavel {

// Values: delay in ms, feedback and level in percent, 0 or 1 for ping-pong: then the echoes of both
// channels together come by turns from the left and from the right. The range keeps its length:
// echoes behind its end are cut off.
Outcome Echo(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
