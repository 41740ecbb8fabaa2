// The writing in a 3D scene: the names of the axes, the distances of the rings, the numbers of the
// points.
#pragma once

#include <QPainter>

#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_lines.h"

namespace sonavel {

void DrawSceneLabels(QPainter& painter, const SceneCamera& camera, const SceneContent& content,
                     const FloorRings& rings);

}  // namespace sonavel
