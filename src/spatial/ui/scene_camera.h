// The eye on a 3D scene: it orbits the middle of the listener's head, and turns places of the scene
// into pixels of the window and back. x runs right, y ahead, z up, as the listener has them.
#pragma once

#include <QMatrix4x4>
#include <QPointF>
#include <QSizeF>
#include <QVector3D>
#include <optional>

namespace sonavel {

class SceneCamera {
  public:
    enum class View { kBehind, kFront, kSide, kTop };

    struct Ray {
        QVector3D origin;
        QVector3D direction;  // of length 1
    };

    // In the pixels that all points are given in, from the left top corner.
    void SetViewport(const QSizeF& size);
    const QSizeF& Viewport() const { return viewport_; }

    void Look(View view);
    // Brings everything within this distance of the listener into sight.
    void Fit(float radius);
    // By a drag of that many pixels.
    void Orbit(const QPointF& pixels);
    // By steps of the wheel; positive ones come nearer.
    void Zoom(double steps);

    QVector3D Eye() const;
    QVector3D Forward() const;
    float Distance() const { return distance_; }  // from what the eye orbits
    float ElevationDegrees() const { return elevation_; }
    QMatrix4x4 Matrix() const;  // from the scene to clip space

    // Nothing for places behind the eye.
    std::optional<QPointF> Project(const QVector3D& place) const;
    // How long a unit of the scene at that place is on the window.
    float PixelsPerUnit(const QVector3D& place) const;
    Ray RayThrough(const QPointF& pixel) const;

  private:
    QVector3D Up() const;

    QSizeF viewport_{1, 1};
    float azimuth_ = 0;    // degrees; 0 stands behind the listener, 90 at the right
    float elevation_ = 0;  // degrees
    float distance_ = 4;
};

enum class DragMode { kInPlane, kHeight };

// Where a point goes that is dragged to that pixel: over its level, or, when the eye looks along
// the level, in the upright plane that faces it; with kHeight straight up and down.
QVector3D DraggedTo(const SceneCamera& camera, const QVector3D& from, const QPointF& pixel,
                    DragMode mode);

}  // namespace sonavel
