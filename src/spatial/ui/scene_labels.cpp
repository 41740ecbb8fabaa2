#include "spatial/ui/scene_labels.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "spatial/ui/label_layout.h"
#include "spatial/ui/listener_model.h"
#include "spatial/ui/scene_balls.h"
#include "view/ui/qt_values.h"

namespace sonavel {
namespace {

const QColor kHalo(0x12, 0x1a, 0x20, 0xd0);
const QColor kAxisColour(0xf2, 0xf7, 0xf7);
const QColor kRingColour(0x9c, 0xdc, 0xdc);
const QColor kNumberColour(0xe4, 0xec, 0xee);
constexpr double kHaloWidth = 2.6;
constexpr double kGap = 3;  // pixels between a ball and its number
constexpr double kHiddenOpacity = 0.3;

QFont FontOf(int pixels, QFont::Weight weight) {
    QFont font;
    font.setPixelSize(GrownWithDesktop(pixels));
    font.setWeight(weight);
    return font;
}

// A point with where it is seen.
struct SeenBall {
    const ScenePoint* point;
    SceneBall ball;
    QPointF middle;
    double radius;  // pixels
    float depth;
};

std::vector<SeenBall> BallsSeen(const SceneCamera& camera, const SceneContent& content) {
    std::vector<SeenBall> seen;
    for (const ScenePoint& point : content.points) {
        const SceneBall ball = BallOf(point, camera);
        const auto middle = camera.Project(ball.centre);
        if (!middle) continue;
        const double radius = double{ball.radius} * camera.PixelsPerUnit(ball.centre);
        seen.push_back({&point, ball, *middle, radius, (ball.centre - camera.Eye()).length()});
    }
    return seen;
}

std::vector<QRectF> RectsOf(const std::vector<SeenBall>& balls) {
    std::vector<QRectF> rects;
    for (const SeenBall& seen : balls) {
        const QPointF corner(seen.radius, seen.radius);
        rects.emplace_back(seen.middle - corner, seen.middle + corner);
    }
    return rects;
}

// Lays the labels out in the order of their importance.
class LabelWriter {
  public:
    LabelWriter(const SceneCamera& camera, const SceneContent& content)
        : camera_(camera),
          balls_(BallsSeen(camera, content)),
          layout_(camera.Viewport(), RectsOf(balls_)) {}

    void AddChosenNumbers();
    void AddAxisNames(float radius);
    void AddPlainNumbers();
    void AddRingDistances(const FloorRings& rings);

    std::vector<SceneLabel> Labels() && { return std::move(labels_); }

  private:
    static bool IsPlain(const SeenBall& seen) { return seen.point->role == PointRole::kPlain; }
    void Add(SceneLabel label, std::span<const QPointF> middles, LabelNeed need);
    void AddNumber(const SeenBall& seen, SceneLabel label, LabelNeed need);

    const SceneCamera& camera_;
    std::vector<SeenBall> balls_;
    LabelLayout layout_;
    std::vector<SceneLabel> labels_;
};

QSizeF SizeOf(const SceneLabel& label) {
    const QFontMetricsF metrics(label.font);
    return {metrics.horizontalAdvance(label.text) + kHaloWidth, metrics.capHeight() + kHaloWidth};
}

void LabelWriter::Add(SceneLabel label, std::span<const QPointF> middles, LabelNeed need) {
    const auto place = layout_.Take(SizeOf(label), middles, need);
    if (!place) return;
    label.place = *place;
    labels_.push_back(std::move(label));
}

void LabelWriter::AddNumber(const SeenBall& seen, SceneLabel label, LabelNeed need) {
    const ScenePoint& point = *seen.point;
    label.text = point.name.isEmpty() ? QString::number(point.number) : point.name;
    const QSizeF size = SizeOf(label);
    const double diagonal = seen.radius * std::numbers::sqrt2 / 2 + kGap;
    const QPointF corner(diagonal + size.width() / 2, diagonal + size.height() / 2);
    const QPointF edge(seen.radius + kGap + size.width() / 2,
                       seen.radius + kGap + size.height() / 2);
    const QPointF ways[] = {{corner.x(), -corner.y()},
                            {-corner.x(), -corner.y()},
                            {corner.x(), corner.y()},
                            {-corner.x(), corner.y()},
                            {edge.x(), 0},
                            {-edge.x(), 0},
                            {0, -edge.y()},
                            {0, edge.y()}};
    std::array<QPointF, std::size(ways)> middles;
    std::transform(std::begin(ways), std::end(ways), middles.begin(),
                   [&](const QPointF& way) { return seen.middle + way; });
    Add(std::move(label), middles, need);
}

void LabelWriter::AddChosenNumbers() {
    for (const SeenBall& seen : balls_)
        if (!IsPlain(seen))
            AddNumber(seen, {.colour = seen.ball.colour, .font = FontOf(13, QFont::Bold)},
                      LabelNeed::kAlways);
}

void LabelWriter::AddPlainNumbers() {
    std::vector<std::pair<SeenBall, bool>> plain;  // with whether the listener hides it
    for (const SeenBall& seen : balls_)
        if (IsPlain(seen)) plain.emplace_back(seen, ListenerHides(camera_.Eye(), seen.ball.centre));
    std::stable_sort(plain.begin(), plain.end(), [](const auto& a, const auto& b) {
        return a.second != b.second ? b.second : a.first.depth < b.first.depth;
    });
    for (const auto& [seen, hidden] : plain)
        AddNumber(seen,
                  {.colour = kNumberColour,
                   .font = FontOf(10, QFont::Normal),
                   .opacity = hidden ? kHiddenOpacity : 1},
                  LabelNeed::kOffLabels);
}

struct AxisName {
    const char* text;
    QVector3D place;
};

void LabelWriter::AddAxisNames(float radius) {
    const float out = 1.07f * radius;
    AxisName names[] = {
        {QT_TRANSLATE_NOOP("SceneLabels", "Right"), {out, 0, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Left"), {-out, 0, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Front"), {0, out, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Back"), {0, -out, kFloorLevel}},
        {QT_TRANSLATE_NOOP("SceneLabels", "Up"), {0, 0, (kAxisTop + 0.06f) * radius}},
    };
    // Looking along an axis its two names fall on one place: the nearer is the one to read.
    const QVector3D eye = camera_.Eye();
    std::sort(std::begin(names), std::end(names), [&](const AxisName& a, const AxisName& b) {
        return (a.place - eye).length() < (b.place - eye).length();
    });
    for (const AxisName& name : names) {
        const auto middle = camera_.Project(name.place);
        if (!middle) continue;
        const QPointF middles[] = {*middle, *middle + QPointF(0, 8), *middle - QPointF(0, 8),
                                   *middle + QPointF(16, 0), *middle - QPointF(16, 0)};
        Add({.text = QCoreApplication::translate("SceneLabels", name.text),
             .colour = kAxisColour,
             .font = FontOf(13, QFont::DemiBold)},
            middles, LabelNeed::kOffLabels);
    }
}

// In hundredths, as all numbers that a person reads and types here.
void LabelWriter::AddRingDistances(const FloorRings& rings) {
    // Seen from the side the rings are lines, and their distances a heap.
    if (std::abs(camera_.ElevationDegrees()) < 6) return;
    for (int ring = 1; ring <= rings.count; ++ring) {
        const float radius = rings.step * static_cast<float>(ring);
        std::vector<QPointF> middles;
        for (const double degrees : {135, 125, 145, 115, 155, 45, 225, 315}) {
            const auto angle = static_cast<float>(degrees / 180 * std::numbers::pi);
            const auto middle =
                camera_.Project({radius * std::sin(angle), radius * std::cos(angle), kFloorLevel});
            if (middle) middles.push_back(*middle);
        }
        Add({.text = QString::number(std::lround(100 * radius)),
             .colour = kRingColour,
             .font = FontOf(10, QFont::Normal)},
            middles, LabelNeed::kOffEverything);
    }
}

void Draw(QPainter& painter, const SceneLabel& label) {
    const QFontMetricsF metrics(label.font);
    const QPointF middle = label.place.center();
    const QPointF baseline(middle.x() - metrics.horizontalAdvance(label.text) / 2,
                           middle.y() + metrics.capHeight() / 2);
    QPainterPath outline;
    outline.addText(baseline, label.font, label.text);
    painter.setOpacity(label.opacity);
    painter.strokePath(outline,
                       QPen(kHalo, kHaloWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(outline, label.colour);
}

}  // namespace

std::vector<SceneLabel> LabelsOf(const SceneCamera& camera, const SceneContent& content,
                                 const FloorRings& rings) {
    LabelWriter writer(camera, content);
    writer.AddChosenNumbers();
    writer.AddAxisNames(rings.Radius());
    writer.AddPlainNumbers();
    writer.AddRingDistances(rings);
    return std::move(writer).Labels();
}

void DrawSceneLabels(QPainter& painter, const std::vector<SceneLabel>& labels) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SceneLabel& label : labels) Draw(painter, label);
    painter.setOpacity(1);
}

}  // namespace sonavel
