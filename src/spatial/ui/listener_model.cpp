#include "spatial/ui/listener_model.h"

#include <algorithm>
#include <cmath>

namespace sonavel {
namespace {

const QVector3D kSkin(0.86f, 0.80f, 0.73f);
const QVector3D kHair(0.30f, 0.25f, 0.23f);
const QVector3D kCloth(0.42f, 0.53f, 0.58f);
const QVector3D kEye(0.16f, 0.18f, 0.22f);

constexpr float kBustBottom = -0.45f;
// The shapes below are life-size for a unit of a metre; drawn larger, the listener is better seen
// and still clear of the nearest points.
constexpr float kEnlargement = 1.28f;

const Ellipsoid kCranium{{0, -0.012f, 0.045f}, {0.104f, 0.132f, 0.116f}};
const Ellipsoid kFace{{0, 0.032f, -0.035f}, {0.082f, 0.084f, 0.118f}};
const Ellipsoid kChin{{0, 0.066f, -0.122f}, {0.042f, 0.040f, 0.032f}};
const Ellipsoid kBrow{{0, 0.098f, 0.028f}, {0.058f, 0.022f, 0.013f}};
const Ellipsoid kNoseBridge{{0, 0.116f, -0.014f}, {0.012f, 0.020f, 0.042f}};
const Ellipsoid kNoseTip{{0, 0.134f, -0.045f}, {0.020f, 0.024f, 0.016f}};
const Ellipsoid kMouth{{0, 0.108f, -0.083f}, {0.026f, 0.016f, 0.009f}};

const Ellipsoid kNeck{{0, -0.025f, -0.19f}, {0.06f, 0.064f, 0.2f}};
const Ellipsoid kShoulders{{0, -0.03f, -0.335f}, {0.235f, 0.092f, 0.085f}};
const Ellipsoid kChest{{0, -0.015f, -0.42f}, {0.195f, 0.115f, 0.16f}};

float HeadField(const QVector3D& place) {
    float field = Join(FieldOf(kCranium, place), FieldOf(kFace, place), 0.06f);
    field = Join(field, FieldOf(kChin, place), 0.05f);
    field = Join(field, FieldOf(kBrow, place), 0.03f);
    field = Join(field, FieldOf(kNoseBridge, place), 0.022f);
    field = Join(field, FieldOf(kNoseTip, place), 0.012f);
    return Join(field, FieldOf(kMouth, place), 0.014f);
}

float BustField(const QVector3D& place) {
    float field = Join(FieldOf(kNeck, place), FieldOf(kShoulders, place), 0.09f);
    field = Join(field, FieldOf(kChest, place), 0.06f);
    return Carve(field, place.z() - kBustBottom, 0.02f);
}

float Between(float value, float low, float high) {
    const float t = std::clamp((value - low) / (high - low), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

QVector3D Mixed(const QVector3D& a, const QVector3D& b, float share) {
    return a + share * (b - a);
}

// Hair covers what lies above a plane that rises towards the forehead.
QVector3D HeadColour(const QVector3D& place) {
    const float abovePlane = 0.86f * place.z() - 0.5f * place.y();
    return Mixed(kSkin, kHair, Between(abovePlane, 0.045f, 0.055f));
}

QVector3D BustColour(const QVector3D& place) {
    const float fromNeck = std::hypot(place.x(), place.y() + 0.025f);
    const float collar = -0.255f - 0.25f * place.y();
    const float low = Between(-place.z(), -collar - 0.006f, -collar + 0.006f);
    return Mixed(kSkin, kCloth, std::max(low, Between(fromNeck, 0.092f, 0.104f)));
}

enum class Side { kLeft, kRight };

Mesh EarModel(Side side) {
    const float out = side == Side::kRight ? 1.0f : -1.0f;
    const QVector3D centre(out * 0.106f, -0.008f, -0.002f);
    const Ellipsoid shell{centre, {0.017f, 0.027f, 0.042f}};
    const Ellipsoid hollow{centre + QVector3D(out * 0.017f, 0.005f, 0.003f),
                           {0.011f, 0.014f, 0.024f}};
    const auto field = [shell, hollow](const QVector3D& place) {
        return Carve(FieldOf(shell, place), FieldOf(hollow, place), 0.008f);
    };
    return MeshOf({centre - QVector3D(out * 0.006f, 0, 0), 28, 36, field,
                   [](const QVector3D&) { return kSkin; }});
}

Mesh EyeModel(Side side) {
    const float out = side == Side::kRight ? 1.0f : -1.0f;
    const Ellipsoid eye{{out * 0.034f, 0.103f, 0.001f}, {0.014f, 0.012f, 0.0085f}};
    return MeshOf({eye.centre, 12, 16, [eye](const QVector3D& p) { return FieldOf(eye, p); },
                   [](const QVector3D&) { return kEye; }});
}

// Whether the line between the places runs through the ellipsoid.
bool Crosses(const Ellipsoid& ellipsoid, const QVector3D& from, const QVector3D& to) {
    const QVector3D start = (from - ellipsoid.centre) / ellipsoid.radii;
    const QVector3D way = (to - from) / ellipsoid.radii;
    const float length = QVector3D::dotProduct(way, way);
    if (length == 0) return false;
    const float nearest = std::clamp(-QVector3D::dotProduct(start, way) / length, 0.0f, 1.0f);
    return (start + nearest * way).lengthSquared() < 1;
}

}  // namespace

Mesh ListenerModel() {
    Mesh model = MeshOf({{0, 0, 0}, 80, 120, HeadField, HeadColour});
    model.Append(MeshOf({{0, -0.025f, -0.34f}, 64, 80, BustField, BustColour}));
    for (const Side side : {Side::kLeft, Side::kRight}) {
        model.Append(EarModel(side));
        model.Append(EyeModel(side));
    }
    for (MeshVertex& vertex : model.vertices) vertex.position *= kEnlargement;
    return model;
}

Mesh BallModel() {
    const Ellipsoid ball{{0, 0, 0}, {1, 1, 1}};
    return MeshOf({ball.centre, 16, 24, [ball](const QVector3D& p) { return FieldOf(ball, p); },
                   [](const QVector3D&) { return QVector3D(1, 1, 1); }});
}

bool ListenerHides(const QVector3D& eye, const QVector3D& place) {
    for (const Ellipsoid& part : {kCranium, kFace, kNeck, kShoulders, kChest})
        if (Crosses(part, eye / kEnlargement, place / kEnlargement)) return true;
    return false;
}

}  // namespace sonavel
