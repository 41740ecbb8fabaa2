#include "effects/ui/dynamics_picture.h"

#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "effects/effect_table.h"

namespace sonavel {

namespace {

constexpr double kFull = 100;
constexpr double kSampleAtFull = 32768;
constexpr double kReach = 10;  // pixels around a point
constexpr double kPointRadius = 5;
constexpr QSize kSize{230, 220};

PlotAxis LevelAxis() {
    return {0, kFull, PlotAxis::Scale::kLinear, {0, 25, 50, 75, 100}, "%"};
}

// A gain as a ratio inside the range of the dialog's field.
double RatioOf(double gain) {
    const EffectParameter& below = FindEffect("dynamics")->parameters[1];
    return gain > 0 ? std::clamp(1 / gain, below.least, below.greatest) : below.greatest;
}

}  // namespace

DynamicsFields DragDynamicsPoint(const DynamicsFields& fields, DynamicsPoint point, double input,
                                 double output) {
    DynamicsFields dragged = fields;
    output = std::clamp(output, 0.0, kFull);
    if (point == DynamicsPoint::kKnee) {
        dragged.threshold = std::clamp(input, 0.0, kFull);
        if (dragged.threshold > 0) dragged.below = RatioOf(output / dragged.threshold);
    } else if (fields.threshold < kFull) {
        const double knee = fields.threshold / fields.below;
        dragged.above = RatioOf((output - knee) / (kFull - fields.threshold));
    }
    return dragged;
}

double DynamicsOutput(const DynamicsFields& fields, double input) {
    auto sample = static_cast<float>(input / kFull * kSampleAtFull);
    ApplyCurve({&sample, 1},
               DynamicsCurve::FromDialog(fields.threshold, fields.below, fields.above));
    return sample / kSampleAtFull * kFull;
}

DynamicsPicture::DynamicsPicture(QWidget* parent)
    : PlotWidget(LevelAxis(), LevelAxis(), kSize, parent) {
    setMouseTracking(true);
    setAccessibleName(tr("Transfer curve"));
}

void DynamicsPicture::SetFields(const DynamicsFields& fields) {
    fields_ = fields;
    update();
}

std::optional<QPointF> DynamicsPicture::PlaceOf(DynamicsPoint point) const {
    if (point == DynamicsPoint::kKnee)
        return PointAt(fields_.threshold, DynamicsOutput(fields_, fields_.threshold));
    if (fields_.threshold >= kFull) return std::nullopt;
    return PointAt(kFull, DynamicsOutput(fields_, kFull));
}

std::optional<DynamicsPoint> DynamicsPicture::PointNear(QPointF place) const {
    std::optional<DynamicsPoint> nearest;
    double reach = kReach;
    for (const DynamicsPoint point : {DynamicsPoint::kKnee, DynamicsPoint::kEnd}) {
        const std::optional<QPointF> at = PlaceOf(point);
        if (!at) continue;
        const double distance = std::hypot(at->x() - place.x(), at->y() - place.y());
        if (distance > reach || (nearest && distance == reach)) continue;
        reach = distance;
        nearest = point;
    }
    return nearest;
}

void DynamicsPicture::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) dragged_ = PointNear(event->position());
}

void DynamicsPicture::mouseMoveEvent(QMouseEvent* event) {
    const QPointF place = event->position();
    if (!dragged_) {
        setCursor(PointNear(place) ? Qt::SizeAllCursor : Qt::ArrowCursor);
        return;
    }
    Q_EMIT Dragged(DragDynamicsPoint(fields_, *dragged_, AcrossAt(place.x()), UpAt(place.y())));
}

void DynamicsPicture::mouseReleaseEvent(QMouseEvent*) {
    dragged_.reset();
}

void DynamicsPicture::DrawPicture(QPainter& painter) const {
    QColor faint = palette().color(QPalette::Text);
    faint.setAlphaF(0.4F);
    painter.setPen(QPen(faint, 1, Qt::DashLine));
    painter.drawLine(PointAt(0, 0), PointAt(kFull, kFull));
    DrawCurve(
        painter, [this](double input) { return DynamicsOutput(fields_, input); }, kFull);
    for (const DynamicsPoint point : {DynamicsPoint::kEnd, DynamicsPoint::kKnee})
        DrawPoint(painter, point);
}

void DynamicsPicture::DrawPoint(QPainter& painter, DynamicsPoint point) const {
    const std::optional<QPointF> place = PlaceOf(point);
    if (!place) return;
    painter.setClipping(false);
    painter.setPen(QPen(AccentColour(), 2));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(*place, kPointRadius, kPointRadius);
}

}  // namespace sonavel
