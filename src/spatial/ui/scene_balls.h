// The balls of a 3D scene: their sizes and colours, and which of them a click means.
#pragma once

#include <QColor>
#include <QPointF>
#include <optional>
#include <vector>

#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_content.h"

namespace sonavel {

struct SceneBall {
    QVector3D centre;
    float radius = 0;  // scene units
    QColor colour;
};

SceneBall BallOf(const ScenePoint& point, const SceneCamera& camera);
// The source while it plays.
SceneBall MovingBall(const SourcePosition& position, const SceneCamera& camera);

// The index of the point at that pixel; of those that lie over one another the nearest to the eye.
std::optional<int> PointAt(const std::vector<ScenePoint>& points, const SceneCamera& camera,
                           const QPointF& pixel);

}  // namespace sonavel
