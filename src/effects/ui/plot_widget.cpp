#include "effects/ui/plot_widget.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "effects/ui/effect_look.h"
#include "platform/qt/device_line.h"

namespace sonavel {

namespace {

constexpr double kMargin = 6;
constexpr double kLabelGap = 4;

// 0 at the axis' least value, 1 at its greatest.
double ShareOf(const PlotAxis& axis, double value) {
    if (axis.scale == PlotAxis::Scale::kLinear)
        return (value - axis.least) / (axis.greatest - axis.least);
    return std::log(std::max(value, 1e-9) / axis.least) / std::log(axis.greatest / axis.least);
}

double ValueAt(const PlotAxis& axis, double share) {
    if (axis.scale == PlotAxis::Scale::kLinear)
        return axis.least + share * (axis.greatest - axis.least);
    return axis.least * std::pow(axis.greatest / axis.least, share);
}

QString NumberText(double value) {
    if (std::abs(value) >= 1000) return QString::number(value / 1000) + u'k';
    return QString::number(value);
}

QString TickText(const PlotAxis& axis, double tick) {
    const QString number = NumberText(tick);
    const bool last = !axis.ticks.empty() && tick == axis.ticks.back();
    return last && *axis.unit ? number + u' ' + QString::fromUtf8(axis.unit) : number;
}

double WidestText(const PlotAxis& axis, const QFontMetricsF& metrics) {
    double widest = 0;
    for (const double tick : axis.ticks)
        widest = std::max(widest, metrics.horizontalAdvance(TickText(axis, tick)));
    return widest;
}

}  // namespace

PlotWidget::PlotWidget(PlotAxis across, PlotAxis up, QSize size, QWidget* parent)
    : QWidget(parent), across_(std::move(across)), up_(std::move(up)), size_(size) {
    setPalette(ProgramPalette());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    setFont(small);
}

QRectF PlotWidget::Plane() const {
    const QFontMetricsF metrics(font());
    const double left = kMargin + WidestText(up_, metrics) + kLabelGap;
    const double right =
        kMargin + metrics.horizontalAdvance(TickText(across_, across_.ticks.back())) / 2;
    const double top = kMargin + metrics.height() / 2;
    const double bottom = kMargin + metrics.height() + kLabelGap;
    return QRectF(rect()).adjusted(left, top, -right, -bottom);
}

QPointF PlotWidget::PointAt(double across, double up) const {
    const QRectF plane = Plane();
    return {plane.left() + ShareOf(across_, across) * plane.width(),
            plane.bottom() - ShareOf(up_, up) * plane.height()};
}

double PlotWidget::AcrossAt(double x) const {
    const QRectF plane = Plane();
    return ValueAt(across_, (x - plane.left()) / plane.width());
}

double PlotWidget::UpAt(double y) const {
    const QRectF plane = Plane();
    return ValueAt(up_, (plane.bottom() - y) / plane.height());
}

QColor PlotWidget::AccentColour() const {
    return palette().color(QPalette::Highlight);
}

QPen PlotWidget::CurvePen() const {
    return QPen(AccentColour(), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void PlotWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    DrawGrid(painter);
    painter.setPen(palette().color(QPalette::Text));
    DrawAcrossLabels(painter);
    DrawUpLabels(painter);
    painter.save();
    painter.setClipRect(Plane().adjusted(-1, -1, 1, 1));
    DrawPicture(painter);
    painter.restore();
    FillFrame(painter, Plane().adjusted(-0.5, -0.5, 0.5, 0.5), palette().color(QPalette::Mid));
}

void PlotWidget::DrawGrid(QPainter& painter) const {
    QColor faint = palette().color(QPalette::Text);
    faint.setAlphaF(0.15F);
    const QRectF plane = Plane();
    for (const double tick : across_.ticks) {
        const double x = PointAt(tick, up_.least).x();
        FillLine(painter, {x - 0.5, plane.top(), 1, plane.height()}, faint);
    }
    for (const double tick : up_.ticks) {
        const double y = PointAt(across_.least, tick).y();
        FillLine(painter, {plane.left(), y - 0.5, plane.width(), 1}, faint);
    }
}

void PlotWidget::DrawAcrossLabels(QPainter& painter) const {
    const QFontMetricsF metrics(font());
    const double top = Plane().bottom() + kLabelGap;
    for (const double tick : across_.ticks) {
        const QString text = TickText(across_, tick);
        const double width = metrics.horizontalAdvance(text) + 2;
        const double x = PointAt(tick, up_.least).x();
        painter.drawText(QRectF(x - width / 2, top, width, metrics.height()), Qt::AlignCenter,
                         text);
    }
}

void PlotWidget::DrawUpLabels(QPainter& painter) const {
    const double height = QFontMetricsF(font()).height();
    for (const double tick : up_.ticks) {
        const double y = PointAt(across_.least, tick).y();
        painter.drawText(QRectF(0, y - height / 2, Plane().left() - kLabelGap, height),
                         Qt::AlignRight | Qt::AlignVCenter, TickText(up_, tick));
    }
}

void PlotWidget::DrawCurve(QPainter& painter, const std::function<double(double)>& curve,
                           double until) const {
    const QRectF plane = Plane();
    const double last = std::min(plane.right(), PointAt(until, up_.least).x());
    QPainterPath path;
    for (double x = plane.left(); x <= last; x += 1) {
        const double across = AcrossAt(x);
        const QPointF point(x, PointAt(across, curve(across)).y());
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    painter.setPen(CurvePen());
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

}  // namespace sonavel
