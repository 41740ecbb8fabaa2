// The listener in the middle of a 3D scene: a mannequin's head with nose and ears, on its
// shoulders.
#pragma once

#include <QVector3D>

#include "spatial/ui/mesh.h"

namespace sonavel {

// The head lies round the origin and looks along y; scene units.
Mesh ListenerModel();
// A sphere of radius 1.
Mesh BallModel();

// Whether the listener stands between the two places.
bool ListenerHides(const QVector3D& eye, const QVector3D& place);

}  // namespace sonavel
