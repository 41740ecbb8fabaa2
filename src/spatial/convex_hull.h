// The convex hull of points on a sphere, which is their Delaunay triangulation there.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "spatial/vector3.h"

namespace sonavel {

// The points' numbers, anticlockwise seen from outside.
using HullFace = std::array<std::uint32_t, 3>;

// Of points of length 1. Four or more points that lie in one plane are told apart by moving each by
// less than a millionth, mirror images alike, so that left and right give mirrored faces. Empty for
// fewer than four points and when all lie in one plane.
std::vector<HullFace> ConvexHull(std::span<const Vector3> points);

}  // namespace sonavel
