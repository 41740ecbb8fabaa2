// Paths to begin with: a circle around the head, a spiral that closes in, and a way past it.
#pragma once

#include <vector>

#include "spatial/direction.h"

namespace sonavel {

enum class PathShape { kCircle, kSpiral, kFlyBy };

inline constexpr double kLeastShapeRadius = 0.1;
inline constexpr double kGreatestShapeRadius = 9.9;
inline constexpr double kGreatestShapeHeight = 9.9;  // above the head and below it
inline constexpr int kMostShapeTurns = 20;

// Lengths in scene units.
struct ShapeNumbers {
    PathShape shape = PathShape::kCircle;
    // Of the circle; of the spiral where it begins; of the way past, how near it comes.
    double radius = 1;
    // Above the ears; what a spiral rises to.
    double height = 0;
    // Around the head, clockwise from straight ahead; negative ones the other way. Of a way past
    // the sign alone counts, which says whether it leads to the right or to the left.
    int turns = 1;

    bool operator==(const ShapeNumbers&) const = default;
};

// The points, each inside what a person's points reach and no more than a list holds. Numbers
// outside the ranges above count as the nearest, and no turns as one.
std::vector<SourcePosition> PointsOfShape(const ShapeNumbers& numbers);

}  // namespace sonavel
