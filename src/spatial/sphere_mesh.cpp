#include "spatial/sphere_mesh.h"

#include <algorithm>
#include <limits>
#include <numbers>

#include "spatial/convex_hull.h"

namespace sonavel {
namespace {

constexpr double kRoundingSlack = -1e-9;

double Least(const std::array<double, 3>& values) {
    return *std::min_element(values.begin(), values.end());
}

}  // namespace

SphereMesh::SphereMesh(std::span<const Vector3> directions)
    : directions_(directions.begin(), directions.end()) {
    for (const HullFace& face : ConvexHull(directions_)) Add(face);
}

void SphereMesh::Add(const std::array<std::uint32_t, 3>& corners) {
    const Vector3& a = directions_[corners[0]];
    const Vector3& b = directions_[corners[1]];
    const Vector3& c = directions_[corners[2]];
    const double volume = Dot(a, Cross(b, c));
    // A face through the head or behind it, of directions of less than half the sphere.
    if (volume < 1e-12) return;
    triangles_.push_back(
        {corners,
         {(1 / volume) * Cross(b, c), (1 / volume) * Cross(c, a), (1 / volume) * Cross(a, b)}});
}

std::array<double, 3> SphereMesh::SharesIn(const Triangle& triangle,
                                           const Vector3& direction) const {
    return {Dot(triangle.normals[0], direction), Dot(triangle.normals[1], direction),
            Dot(triangle.normals[2], direction)};
}

std::size_t SphereMesh::Find(const Vector3& direction) const {
    std::size_t best = 0;
    double bestLeast = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < triangles_.size(); ++i) {
        const double least = Least(SharesIn(triangles_[i], direction));
        if (least <= bestLeast) continue;
        best = i;
        bestLeast = least;
    }
    return best;
}

SphereBlend SphereMesh::Around(const Vector3& direction, std::size_t& nearby) const {
    if (Least(SharesIn(triangles_[nearby], direction)) < kRoundingSlack) nearby = Find(direction);
    SphereBlend blend{triangles_[nearby].corners, SharesIn(triangles_[nearby], direction)};
    double sum = 0;
    for (double& share : blend.shares) sum += share = std::max(share, 0.0);
    for (double& share : blend.shares) share = sum > 0 ? share / sum : 1.0 / 3;
    return blend;
}

double SphereMesh::GreatestGap() const {
    double greatest = 0;
    for (const Triangle& triangle : triangles_) {
        const Vector3& a = directions_[triangle.corners[0]];
        const Vector3 across =
            Cross(directions_[triangle.corners[1]] - a, directions_[triangle.corners[2]] - a);
        const double cosine = std::clamp(Dot(Direction(across), a), -1.0, 1.0);
        greatest = std::max(greatest, std::acos(cosine) * 180 / std::numbers::pi);
    }
    return greatest;
}

}  // namespace sonavel
