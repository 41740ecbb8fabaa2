#include "spatial/ui/scene_balls.h"

#include <algorithm>
#include <cmath>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

// Balls keep their size on the window when the eye goes back, and shrink a little with their
// own distance.
constexpr float kPlainRadius = 0.0085f;  // parts of the eye's distance
constexpr float kChosenRadius = 0.0125f;
constexpr float kMovingRadius = 0.0155f;
constexpr double kPickPixels = 12;

const QColor kNearColour(0x5a, 0xc8, 0xd8);
const QColor kFarColour(0x9a, 0x9c, 0xe6);
const QColor kSelectedColour(0xff, 0xd0, 0x40);
const QColor kStartColour(0x5c, 0xd6, 0x6a);
const QColor kEndColour(0xff, 0x6e, 0x5a);
const QColor kMovingColour(0xff, 0xff, 0xff);

QColor ColourOf(const ScenePoint& point) {
    switch (point.role) {
        case PointRole::kSelected:
            return kSelectedColour;
        case PointRole::kStart:
            return kStartColour;
        case PointRole::kEnd:
            return kEndColour;
        case PointRole::kPlain:
            break;
    }
    const float between = (kInnerRadius + kOuterRadius) / 2;
    return ToVector(point.position).length() < between ? kNearColour : kFarColour;
}

}  // namespace

SceneBall BallOf(const ScenePoint& point, const SceneCamera& camera) {
    const float share = point.role == PointRole::kPlain ? kPlainRadius : kChosenRadius;
    return {ToVector(point.position), share * camera.Distance(), ColourOf(point)};
}

SceneBall MovingBall(const SourcePosition& position, const SceneCamera& camera) {
    return {ToVector(position), kMovingRadius * camera.Distance(), kMovingColour};
}

std::optional<int> PointAt(const std::vector<ScenePoint>& points, const SceneCamera& camera,
                           const QPointF& pixel) {
    std::optional<int> found;
    double bestMiss = kPickPixels;
    float bestDepth = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const SceneBall ball = BallOf(points[i], camera);
        const auto seen = camera.Project(ball.centre);
        if (!seen) continue;
        const double ballPixels = double{ball.radius} * camera.PixelsPerUnit(ball.centre);
        const double away = std::hypot(seen->x() - pixel.x(), seen->y() - pixel.y());
        const double miss = std::max(0.0, away - ballPixels);
        const float depth = (ball.centre - camera.Eye()).length();
        if (miss > bestMiss || (miss == bestMiss && found && depth > bestDepth)) continue;
        found = static_cast<int>(i);
        bestMiss = miss;
        bestDepth = depth;
    }
    return found;
}

}  // namespace sonavel
