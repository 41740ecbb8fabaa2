// The writing in a 3D scene: the names of the axes, the distances of the rings, the numbers of the
// points. Where there is no room for all, the chosen points' numbers come first, then the names,
// then the numbers of the nearer points.
#pragma once

#include <QFont>
#include <QPainter>

#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_lines.h"

namespace sonavel {

struct SceneLabel {
    QString text{};
    QColor colour{};
    QFont font{};
    double opacity = 1;
    QRectF place{};  // in pixels of the window
};

std::vector<SceneLabel> LabelsOf(const SceneCamera& camera, const SceneContent& content,
                                 const FloorRings& rings);
void DrawSceneLabels(QPainter& painter, const std::vector<SceneLabel>& labels);

}  // namespace sonavel
