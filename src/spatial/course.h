// Where a moving source is when: the corners of its way, and when it is at each of them.
#pragma once

#include <vector>

#include "spatial/direction.h"

namespace sonavel {

enum class PathLoop { kOnce, kLoop };

struct Course {
    std::vector<SourcePosition> corners;  // at least one, joined by straight legs
    // The share of a round at which each corner is reached: rising from 0, to 1 or beyond. Empty:
    // at even speed from the first corner at 0 to the last at 1.
    std::vector<double> reached{};
    PathLoop loop = PathLoop::kOnce;  // a loop ends where it begins
    double round = 1;                 // how long a round is, in shares of the range

    // From a share of the range to that of the round.
    double ShareOfRound(double share) const;
};

}  // namespace sonavel
