#include "platform/qt/device_line.h"

#include <algorithm>
#include <cmath>

namespace sonavel {

namespace {

// Of the factors of a scale and of places that a layout has computed.
constexpr double kRoundingNoise = 1e-6;

// Where a line is as wide as its place allows, its place's start or end is kept.
enum class Edge { kStart, kEnd };

struct Extent {
    double start, length;
};

Extent Thin(double start, double length, Edge edge) {
    const double whole = std::max(std::floor(length + kRoundingNoise), 1.0);
    return {edge == Edge::kStart ? std::round(start) : std::round(start + length) - whole, whole};
}

Extent Long(double start, double length) {
    const double first = std::round(start);
    return {first, std::round(start + length) - first};
}

void FillAt(QPainter& painter, const QRectF& line, const QColor& colour, Edge edge) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(line);
    const bool upright = line.width() <= line.height();
    const Extent x =
        upright ? Thin(device.x(), device.width(), edge) : Long(device.x(), device.width());
    const Extent y =
        upright ? Long(device.y(), device.height()) : Thin(device.y(), device.height(), edge);
    painter.fillRect(toDevice.inverted().mapRect(QRectF(x.start, y.start, x.length, y.length)),
                     colour);
}

void FillLeftAbove(QPainter& painter, const QRectF& area, const QColor& colour) {
    FillAt(painter, {area.left(), area.top(), area.width(), 1}, colour, Edge::kStart);
    FillAt(painter, {area.left(), area.top(), 1, area.height()}, colour, Edge::kStart);
}

void FillRightBelow(QPainter& painter, const QRectF& area, const QColor& colour) {
    FillAt(painter, {area.left(), area.bottom() - 1, area.width(), 1}, colour, Edge::kEnd);
    FillAt(painter, {area.right() - 1, area.top(), 1, area.height()}, colour, Edge::kEnd);
}

}  // namespace

void FillLine(QPainter& painter, const QRectF& line, const QColor& colour) {
    FillAt(painter, line, colour, Edge::kStart);
}

void FillFrame(QPainter& painter, const QRectF& area, const QColor& colour) {
    FillRightBelow(painter, area, colour);
    FillLeftAbove(painter, area, colour);
}

void FillBevel(QPainter& painter, const QRectF& area, const QPalette& palette, Relief relief) {
    const QColor light = palette.color(QPalette::Light);
    const QColor dark = palette.color(QPalette::Dark);
    FillRightBelow(painter, area, relief == Relief::kRaised ? dark : light);
    FillLeftAbove(painter, area, relief == Relief::kRaised ? light : dark);
}

}  // namespace sonavel
