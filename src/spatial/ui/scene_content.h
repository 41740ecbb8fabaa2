// What a 3D scene shows: the points a source can be placed at, its path, and the source itself
// while it plays.
#pragma once

#include <QString>
#include <QVector3D>
#include <optional>
#include <vector>

#include "spatial/direction.h"

namespace sonavel {

enum class PointRole { kPlain, kSelected, kStart, kEnd };

struct ScenePoint {
    SourcePosition position;
    int number = 0;  // the one shown beside it
    PointRole role = PointRole::kPlain;
    QString name{};  // shown in place of the number

    bool operator==(const ScenePoint&) const = default;
};

enum class PointDragging { kOff, kOn };

struct SceneContent {
    std::vector<ScenePoint> points;
    std::vector<SourcePosition> path;  // legs in order; less than two points draw nothing
    std::vector<std::vector<SourcePosition>> otherPaths{};  // drawn more faintly
    PointDragging dragging = PointDragging::kOff;
    bool showsSpheres = false;  // the circles on which the system's points lie
    bool showsStems = false;    // a line from each point to the floor

    bool operator==(const SceneContent&) const = default;
};

inline QVector3D ToVector(const SourcePosition& position) {
    return {position.x, position.y, position.z};
}
inline SourcePosition ToPosition(const QVector3D& vector) {
    return {vector.x(), vector.y(), vector.z()};
}

}  // namespace sonavel
