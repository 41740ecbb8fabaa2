// A curve through the points of a path: a centripetal Catmull-Rom spline (C. Yuksel, S. Schaefer,
// J. Keyser, 2011), which has no loops and cusps between its points.
#pragma once

#include <span>
#include <vector>

#include "spatial/direction.h"

namespace sonavel {

// The curve as a path of short straight legs.
struct Curve {
    std::vector<SourcePosition> corners;
    std::vector<std::size_t> cornerOfPoint;  // the number of the corner at each point
};

// kClosed: the last point is where the first one is, and the curve goes on there as it began.
enum class CurveEnds { kOpen, kClosed };

// 64 legs between two points. Points that repeat the one before them share its corner; with fewer
// than three others the path stays straight.
Curve CurveThrough(std::span<const SourcePosition> points, CurveEnds ends);
// The corners of the open curve.
std::vector<SourcePosition> SplineThrough(std::span<const SourcePosition> points);

}  // namespace sonavel
