// Whether the times of a path can be kept.
#pragma once

#include "spatial/placing.h"

namespace sonavel {

inline constexpr double kGreatestPathSeconds = 1000000;

// Fails, and says why, for times that do not rise or lie outside 0 to kGreatestPathSeconds, and for
// a round that ends before its last point is reached.
Outcome CheckTimes(const Placing& placing);

}  // namespace sonavel
