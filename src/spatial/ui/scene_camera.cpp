#include "spatial/ui/scene_camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sonavel {
namespace {

constexpr float kFieldOfView = 32;  // degrees, upright
constexpr float kDegreesPerPixel = 0.4f;
constexpr double kZoomPerStep = 0.88;
constexpr float kNearest = 0.8f;
constexpr float kFarthest = 800;
constexpr float kFlatLook = 15;  // degrees; below, a level is too foreshortened to drag on
const QVector3D kTarget(0, 0, 0);

float Radians(float degrees) {
    return degrees * std::numbers::pi_v<float> / 180;
}

struct Angles {
    float azimuth;
    float elevation;
};

Angles AnglesOf(SceneCamera::View view) {
    switch (view) {
        case SceneCamera::View::kFront:
            return {180, 0};
        case SceneCamera::View::kSide:
            return {90, 0};
        case SceneCamera::View::kTop:
            return {0, 90};
        case SceneCamera::View::kBehind:
            break;
    }
    return {-32, 24};
}

// Where the ray meets the plane; nothing when it runs along the plane or away from it.
std::optional<QVector3D> Meet(const SceneCamera::Ray& ray, const QVector3D& inPlane,
                              const QVector3D& normal) {
    const float approach = QVector3D::dotProduct(ray.direction, normal);
    if (std::abs(approach) < 0.02f) return std::nullopt;
    const float distance = QVector3D::dotProduct(inPlane - ray.origin, normal) / approach;
    if (distance <= 0) return std::nullopt;
    return ray.origin + distance * ray.direction;
}

QVector3D UprightFacing(const SceneCamera& camera) {
    QVector3D normal = camera.Forward();
    normal.setZ(0);
    return normal.normalized();
}

}  // namespace

void SceneCamera::SetViewport(const QSizeF& size) {
    viewport_ = {std::max(1.0, size.width()), std::max(1.0, size.height())};
}

void SceneCamera::Look(View view) {
    const Angles angles = AnglesOf(view);
    azimuth_ = angles.azimuth;
    elevation_ = angles.elevation;
}

void SceneCamera::Fit(float radius) {
    const auto aspect = static_cast<float>(viewport_.width() / viewport_.height());
    const float halfView = std::tan(Radians(kFieldOfView / 2)) * std::min(1.0f, aspect);
    distance_ = std::clamp(radius / std::sin(std::atan(halfView)), kNearest, kFarthest);
}

void SceneCamera::Orbit(const QPointF& pixels) {
    azimuth_ = std::remainder(azimuth_ - kDegreesPerPixel * static_cast<float>(pixels.x()), 360.0f);
    elevation_ =
        std::clamp(elevation_ + kDegreesPerPixel * static_cast<float>(pixels.y()), -90.0f, 90.0f);
}

void SceneCamera::Zoom(double steps) {
    const auto factor = static_cast<float>(std::pow(kZoomPerStep, steps));
    distance_ = std::clamp(distance_ * factor, kNearest, kFarthest);
}

QVector3D SceneCamera::Forward() const {
    const float azimuth = Radians(azimuth_);
    const float elevation = Radians(elevation_);
    return {-std::cos(elevation) * std::sin(azimuth), std::cos(elevation) * std::cos(azimuth),
            -std::sin(elevation)};
}

// Its own formula instead of a cross product with z, which has no length when looking straight
// down.
QVector3D SceneCamera::Up() const {
    const float azimuth = Radians(azimuth_);
    const float elevation = Radians(elevation_);
    return {-std::sin(elevation) * std::sin(azimuth), std::sin(elevation) * std::cos(azimuth),
            std::cos(elevation)};
}

QVector3D SceneCamera::Eye() const {
    return kTarget - distance_ * Forward();
}

QMatrix4x4 SceneCamera::Matrix() const {
    QMatrix4x4 matrix;
    matrix.perspective(kFieldOfView, static_cast<float>(viewport_.width() / viewport_.height()),
                       distance_ * 0.05f, distance_ * 12);
    matrix.lookAt(Eye(), kTarget, Up());
    return matrix;
}

std::optional<QPointF> SceneCamera::Project(const QVector3D& place) const {
    const QVector4D clip = Matrix() * QVector4D(place, 1);
    if (clip.w() <= 0) return std::nullopt;
    const QVector4D seen = clip / clip.w();
    return QPointF((seen.x() + 1.0) / 2 * viewport_.width(),
                   (1.0 - seen.y()) / 2 * viewport_.height());
}

float SceneCamera::PixelsPerUnit(const QVector3D& place) const {
    const float depth = QVector3D::dotProduct(place - Eye(), Forward());
    const float halfView = std::tan(Radians(kFieldOfView / 2));
    return static_cast<float>(viewport_.height()) / 2 / (std::max(depth, 1e-3f) * halfView);
}

SceneCamera::Ray SceneCamera::RayThrough(const QPointF& pixel) const {
    const auto x = static_cast<float>(pixel.x() / viewport_.width() * 2 - 1);
    const auto y = static_cast<float>(1 - pixel.y() / viewport_.height() * 2);
    const auto aspect = static_cast<float>(viewport_.width() / viewport_.height());
    const float halfView = std::tan(Radians(kFieldOfView / 2));
    const QVector3D right = QVector3D::crossProduct(Forward(), Up());
    const QVector3D direction = Forward() + halfView * (aspect * x * right + y * Up());
    return {Eye(), direction.normalized()};
}

QVector3D DraggedTo(const SceneCamera& camera, const QVector3D& from, const QPointF& pixel,
                    DragMode mode) {
    const bool level =
        mode == DragMode::kInPlane && std::abs(camera.ElevationDegrees()) >= kFlatLook;
    const QVector3D normal = level ? QVector3D(0, 0, 1) : UprightFacing(camera);
    const auto met = Meet(camera.RayThrough(pixel), from, normal);
    // Towards the horizon a level has no end.
    if (!met || (*met - camera.Eye()).length() > 8 * camera.Distance()) return from;
    if (mode == DragMode::kHeight) return {from.x(), from.y(), met->z()};
    return *met;
}

}  // namespace sonavel
