#include "spatial/course.h"

#include <cmath>

namespace sonavel {

double Course::ShareOfRound(double share) const {
    if (loop == PathLoop::kOnce) return share;
    const double rounds = share / round;
    return rounds - std::floor(rounds);
}

}  // namespace sonavel
