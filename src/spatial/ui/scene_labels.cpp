#include "spatial/ui/scene_labels.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainterPath>
#include <cmath>

#include "spatial/ui/listener_model.h"
#include "spatial/ui/scene_balls.h"

namespace sonavel {
namespace {

const QColor kHalo(0x12, 0x1a, 0x20, 0xd0);
const QColor kAxisColour(0xf2, 0xf7, 0xf7);
const QColor kRingColour(0x9c, 0xdc, 0xdc);
const QColor kNumberColour(0xe4, 0xec, 0xee);
constexpr double kHaloWidth = 2.6;

struct Label {
    QString text;
    QPointF middle;
    QColor colour;
    QFont font;
    double opacity = 1;
};

void Draw(QPainter& painter, const Label& label) {
    const QFontMetricsF metrics(label.font);
    const QPointF baseline(label.middle.x() - metrics.horizontalAdvance(label.text) / 2,
                           label.middle.y() + (metrics.ascent() - metrics.descent()) / 2);
    QPainterPath outline;
    outline.addText(baseline, label.font, label.text);
    painter.setOpacity(label.opacity);
    painter.strokePath(outline,
                       QPen(kHalo, kHaloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(outline, label.colour);
}

QFont FontOf(int pixels, QFont::Weight weight) {
    QFont font;
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

struct AxisName {
    const char* text;
    QVector3D place;
};

void DrawAxisNames(QPainter& painter, const SceneCamera& camera, float radius) {
    const float out = 1.07f * radius;
    const AxisName names[] = {
        {QT_TRANSLATE_NOOP("SceneLabels", "Right"), {out, 0, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Left"), {-out, 0, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Front"), {0, out, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Back"), {0, -out, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Up"), {0, 0, (kAxisTop + 0.06f) * radius}},
    };
    // Looking along an axis its two names fall on one place: the nearer is the one to read.
    const QVector3D eye = camera.Eye();
    for (const AxisName& name : names) {
        const auto middle = camera.Project(name.place);
        if (!middle) continue;
        bool covered = false;
        for (const AxisName& other : names) {
            const auto there = camera.Project(other.place);
            covered = covered || (there && std::abs(there->x() - middle->x()) < 30 &&
                                  std::abs(there->y() - middle->y()) < 12 &&
                                  (other.place - eye).length() < (name.place - eye).length());
        }
        if (covered) continue;
        Draw(painter, {QCoreApplication::translate("SceneLabels", name.text), *middle, kAxisColour,
                       FontOf(13, QFont::DemiBold)});
    }
}

// In hundredths, as all numbers that a person reads and types here.
void DrawRingDistances(QPainter& painter, const SceneCamera& camera, const FloorRings& rings) {
    // Seen from the side the rings are lines, and their distances a heap.
    if (std::abs(camera.ElevationDegrees()) < 6) return;
    for (int ring = 1; ring <= rings.count; ++ring) {
        const float radius = rings.step * static_cast<float>(ring);
        const float aside = 0.7071f * radius;
        const auto middle = camera.Project({aside, -aside, kFloorLevel});
        if (!middle) continue;
        Draw(painter, {QString::number(std::lround(100 * radius)), *middle, kRingColour,
                       FontOf(10, QFont::Normal)});
    }
}

void DrawNumber(QPainter& painter, const SceneCamera& camera, const ScenePoint& point) {
    const SceneBall ball = BallOf(point, camera);
    const auto middle = camera.Project(ball.centre);
    if (!middle) return;
    const bool chosen = point.role != PointRole::kPlain;
    const double aside = double{ball.radius} * camera.PixelsPerUnit(ball.centre) + 3;
    const QFont font = chosen ? FontOf(13, QFont::Bold) : FontOf(10, QFont::Normal);
    const QString text = QString::number(point.number);
    const double half = QFontMetricsF(font).horizontalAdvance(text) / 2;
    const bool hidden = !chosen && ListenerHides(camera.Eye(), ball.centre);
    Draw(painter, {text, *middle + QPointF(aside + half, -aside),
                   chosen ? ball.colour : kNumberColour, font, hidden ? 0.3 : 1});
}

}  // namespace

void DrawSceneLabels(QPainter& painter, const SceneCamera& camera, const SceneContent& content,
                     const FloorRings& rings) {
    painter.setRenderHint(QPainter::Antialiasing);
    DrawRingDistances(painter, camera, rings);
    DrawAxisNames(painter, camera, rings.Radius());
    for (const ScenePoint& point : content.points)
        if (point.role == PointRole::kPlain) DrawNumber(painter, camera, point);
    for (const ScenePoint& point : content.points)
        if (point.role != PointRole::kPlain) DrawNumber(painter, camera, point);
    painter.setOpacity(1);
}

}  // namespace sonavel
