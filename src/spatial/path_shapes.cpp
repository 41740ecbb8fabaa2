#include "spatial/path_shapes.h"

#include <algorithm>
#include <cmath>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr int kUsualPointsPerTurn = 12;
constexpr double kSpiralEnd = 0.25;  // of the radius
constexpr double kFlyByReach = 6;    // in radii to each side
constexpr double kFarthest = -kLeastCoordinate / 100.0;

int PointsPerTurn(int turns) {
    return std::min(kUsualPointsPerTurn, (kMostUserPoints - 1) / std::abs(turns));
}

SourcePosition PointAround(double azimuth, double radius, double height) {
    SourcePosition point = PositionOf(PolarPosition{azimuth, 0, radius});
    point.z = static_cast<float>(height);
    return point;
}

std::vector<SourcePosition> Winding(const ShapeNumbers& numbers) {
    const int steps = std::abs(numbers.turns) * PointsPerTurn(numbers.turns);
    const bool closesIn = numbers.shape == PathShape::kSpiral;
    std::vector<SourcePosition> points;
    for (int step = 0; step <= steps; ++step) {
        const double share = static_cast<double>(step) / steps;
        const double azimuth = 360.0 * numbers.turns * share;
        const double radius = numbers.radius * (closesIn ? 1 - (1 - kSpiralEnd) * share : 1);
        points.push_back(PointAround(azimuth, radius, numbers.height * (closesIn ? share : 1)));
    }
    return points;
}

std::vector<SourcePosition> FlyBy(const ShapeNumbers& numbers) {
    const double reach = std::min(kFlyByReach * numbers.radius, kFarthest);
    const auto from = static_cast<float>(numbers.turns > 0 ? -reach : reach);
    const auto ahead = static_cast<float>(numbers.radius);
    const auto height = static_cast<float>(numbers.height);
    return {{from, ahead, height}, {-from, ahead, height}};
}

}  // namespace

std::vector<SourcePosition> PointsOfShape(const ShapeNumbers& numbers) {
    ShapeNumbers held = numbers;
    held.radius = std::clamp(numbers.radius, kLeastShapeRadius, kGreatestShapeRadius);
    held.height = std::clamp(numbers.height, -kGreatestShapeHeight, kGreatestShapeHeight);
    held.turns = std::clamp(numbers.turns, -kMostShapeTurns, kMostShapeTurns);
    if (held.turns == 0) held.turns = 1;
    return held.shape == PathShape::kFlyBy ? FlyBy(held) : Winding(held);
}

}  // namespace sonavel
