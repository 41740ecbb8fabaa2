// A curve through the points of a path: a centripetal Catmull-Rom spline (C. Yuksel, S. Schaefer,
// J. Keyser, 2011), which has no loops and cusps between its points.
#pragma once

#include <span>
#include <vector>

#include "spatial/direction.h"

namespace sonavel {

// The curve as a path of short straight legs, 64 between two points. Points that repeat the one
// before them are left out; with fewer than three others the path stays straight.
std::vector<SourcePosition> SplineThrough(std::span<const SourcePosition> points);

}  // namespace sonavel
