// The lines of a 3D scene: the floor with its distance rings and axes, the circles of the system's
// points, stems, and the path.
#pragma once

#include <QVector3D>
#include <QVector4D>
#include <vector>

#include "spatial/ui/scene_content.h"

namespace sonavel {

inline constexpr float kFloorLevel = -0.7f;
inline constexpr float kAxisTop = 0.8f;  // of the axis upwards, in parts of the outermost ring

// Circles on the floor round the listener, at 0.6 and multiples of it.
struct FloorRings {
    float step = 0.6f;
    int count = 3;

    float Radius() const { return step * static_cast<float>(count); }
};

// As many as the scene's points need, and no more than a person can tell apart.
FloorRings RingsFor(const SceneContent& content);
// How far from the listener anything of the scene stands.
float ReachOf(const SceneContent& content);

struct LineVertex {
    QVector3D position;
    QVector4D colour;
};

// Two vertices a line.
struct SceneLines {
    std::vector<LineVertex> thin;
    std::vector<LineVertex> thick;
};
SceneLines LinesOf(const SceneContent& content, const FloorRings& rings);

}  // namespace sonavel
