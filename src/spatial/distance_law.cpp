#include "spatial/distance_law.h"

#include <algorithm>
#include <cmath>

namespace sonavel {

double DistanceLaw::GainAt(double distance) const {
    const double gain = leastDistance / std::max(leastDistance, distance);
    return fall == kUsualFall ? gain : std::pow(gain, fall / kUsualFall);
}

double DistanceLaw::DistanceOf(double gain) const {
    return fall > 0 ? leastDistance / std::pow(gain, kUsualFall / fall) : leastDistance;
}

}  // namespace sonavel
