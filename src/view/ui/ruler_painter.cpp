#include "view/ui/ruler_painter.h"

#include <QPolygon>
#include <algorithm>

#include "platform/qt/device_line.h"
#include "view/draw/frequency_ruler.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kMajorTick = 6;
constexpr int kMinorTick = 3;
constexpr int kLevelTick = 3;
constexpr int kMarkSize = 5;
constexpr int kFrequencyLabelRight = 5;  // of the ruler's left edge
constexpr int kLabelAbove = 6;           // its top above its tick, in the ordinary size
constexpr int kOrdinaryPixels = 11;

enum class MarkShape { kCursor, kSelectionStart, kSelectionEnd };

void PaintMark(QPainter& painter, int x, int top, MarkShape shape) {
    QPolygon polygon;
    switch (shape) {
        case MarkShape::kCursor:
            polygon << QPoint(x - kMarkSize + 1, top) << QPoint(x + kMarkSize - 1, top)
                    << QPoint(x, top + kMarkSize - 1);
            break;
        case MarkShape::kSelectionStart:
            polygon << QPoint(x, top) << QPoint(x, top + kMarkSize) << QPoint(x + kMarkSize, top);
            break;
        case MarkShape::kSelectionEnd:
            polygon << QPoint(x, top) << QPoint(x, top + kMarkSize) << QPoint(x - kMarkSize, top);
            break;
    }
    painter.drawPolygon(polygon);
}

void PaintMarks(QPainter& painter, const HorizontalRuler& ruler, int top,
                const ColourTable& colours) {
    const auto select = [&](ColourSlot slot) {
        painter.setPen(ToQColor(colours[slot]));
        painter.setBrush(ToQColor(colours[slot]));
    };
    select(ColourSlot::kSelectedWaveform);
    if (ruler.selectionStartX)
        PaintMark(painter, *ruler.selectionStartX, top, MarkShape::kSelectionStart);
    if (ruler.selectionEndX)
        PaintMark(painter, *ruler.selectionEndX, top, MarkShape::kSelectionEnd);
    select(ColourSlot::kCursor);
    if (ruler.cursorX) PaintMark(painter, *ruler.cursorX, top, MarkShape::kCursor);
}

int DigitHeight(const QFont& font) {
    return QFontMetrics(font).tightBoundingRect(QStringLiteral("-0123456789")).height();
}

// Of the digits, with a row of air at both sides.
int LevelLabelHeight(const QFont& font) {
    return DigitHeight(font) + 2;
}

double CentreOfDigits(const QFont& font) {
    return QFontMetrics(font).ascent() - DigitHeight(font) / 2.0;
}

// The label's top above its tick: the digits stand beside it in any size as in the ordinary one.
int LabelAbove(const QFont& font) {
    QFont ordinary = font;
    ordinary.setPixelSize(kOrdinaryPixels);
    return kLabelAbove + qRound(CentreOfDigits(font) - CentreOfDigits(ordinary));
}

// Below the ticks and the marks in any size; digits have nothing below their line.
int BaselineOf(const Rectangle& ruler, const QFont& font) {
    const int usual = ruler.bottom - QFontMetrics(font).descent() - 1;
    return std::min(std::max(usual, ruler.top + kMajorTick + DigitHeight(font)), ruler.bottom - 1);
}

// A label that is wider than its room is drawn narrower.
void DrawNarrowed(QPainter& painter, const QString& text, const QPoint& leftTop, int right) {
    const double room = right - leftTop.x();
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
    painter.save();
    painter.translate(leftTop.x(), leftTop.y() + painter.fontMetrics().ascent());
    painter.scale(std::min(1.0, room / width), 1);
    painter.drawText(QPointF(0, 0), text);
    painter.restore();
}

// A ruler's field, with the painter set up to draw ticks and labels in it.
void BeginRuler(QPainter& painter, const Rectangle& area, RulerRoom room,
                const ColourTable& colours) {
    painter.setClipRect(ToQRect(area), Qt::IntersectClip);
    painter.fillRect(ToQRect(area), ToQColor(colours[ColourSlot::kRulerBackground]));
    painter.setFont(RulerFont(room));
    painter.setPen(ToQColor(colours[ColourSlot::kRulerText]));
}

// The part of the ruler beside those rows.
Rectangle BesideOf(const Rectangle& ruler, const Rectangle& rows) {
    return {ruler.left, std::max(ruler.top, rows.top), ruler.right,
            std::min(ruler.bottom, rows.bottom)};
}

void PaintFrequencyRuler(QPainter& painter, const CSoundView& view) {
    const ViewGeometry& geometry = view.State().Geometry();
    Rectangle area = BesideOf(geometry.verticalRuler, geometry.spectrogram);
    if (area.Empty()) return;
    // Beside the line between both pictures, too.
    if (geometry.ShowsEnvelope()) area.top = geometry.envelope.bottom;
    const unsigned channels = std::clamp(view.Sound().GetChannels(), 1u, 2u);
    const Rectangle lanes[] = {geometry.SpectrogramLane(0, channels),
                               geometry.SpectrogramLane(1, channels)};
    painter.save();
    BeginRuler(painter, area, RulerRoom::kColumn, view.Settings().colours);
    const int above = LabelAbove(painter.font());
    const QColor colour = painter.pen().color();
    FillLine(painter, QRect(area.left, area.top, 1, area.Height()), colour);
    for (const FrequencyTick& tick :
         LayOutFrequencyRuler({.lanes = std::span(lanes).first(channels),
         .scale = view.Settings().spectrogram.look.scale,
         .highest = view.Sound().GetSamplesPerSecond() / 2.0,
         .labelHeight = LevelLabelHeight(painter.font())})) {
        FillLine(painter, QRect(area.left, tick.y, kLevelTick, 1), colour);
        const QPoint label(area.left + kFrequencyLabelRight, tick.y - above);
        if (!tick.label.empty()) DrawNarrowed(painter, ToQString(tick.label), label, area.right);
    }
    painter.restore();
}

}  // namespace

void PaintHorizontalRuler(QPainter& painter, const CSoundView& view) {
    HorizontalRulerRequest request;
    request.area = view.State().Geometry().horizontalRuler;
    request.map = view.Zoom().Pixels();
    request.samplesPerSecond = view.Sound().GetSamplesPerSecond();
    request.format = view.Settings().statusFormat;
    request.cursor = view.State().Cursor();
    request.selection = view.State().GetSelection();
    PaintHorizontalRuler(painter, request, view.Settings().colours);
}

void PaintHorizontalRuler(QPainter& painter, const HorizontalRulerRequest& request,
                          const ColourTable& colours) {
    const Rectangle& area = request.area;
    if (area.Empty()) return;
    painter.save();
    BeginRuler(painter, area, RulerRoom::kRow, colours);
    const HorizontalRuler ruler = LayOutHorizontalRuler(request, WidthIn(painter.font()));
    const int baseline = BaselineOf(area, painter.font());
    const QColor colour = painter.pen().color();
    for (const TimeTick& tick : ruler.ticks) {
        const int length = tick.size == TickSize::kMajor ? kMajorTick : kMinorTick;
        FillLine(painter, QRect(tick.x, area.top, 1, length), colour);
    }
    for (const TimeLabel& label : ruler.labels) {
        const QString text = ToQString(label.text);
        // A label that would be cut at the right is not worth its place.
        if (label.x + painter.fontMetrics().horizontalAdvance(text) > area.right) continue;
        painter.drawText(QPoint(label.x, baseline), text);
    }
    PaintMarks(painter, ruler, area.top, colours);
    painter.restore();
}

void PaintVerticalRuler(QPainter& painter, const CSoundView& view) {
    const ViewGeometry& geometry = view.State().Geometry();
    if (geometry.ShowsSpectrogram()) PaintFrequencyRuler(painter, view);
    if (!geometry.ShowsEnvelope()) return;
    const unsigned channels = std::clamp(view.Sound().GetChannels(), 1u, 2u);
    const Rectangle lanes[] = {geometry.Lane(0, channels), geometry.Lane(1, channels)};
    VerticalRulerRequest request;
    request.area = BesideOf(geometry.verticalRuler, geometry.envelope);
    request.lanes = std::span(lanes).first(channels);
    request.vertical = view.Zoom().Vertical();
    request.fullScale = FullScaleOf(view.Sound().GetBits());
    PaintVerticalRuler(painter, request, view.Settings().colours);
}

void PaintVerticalRuler(QPainter& painter, VerticalRulerRequest request,
                        const ColourTable& colours) {
    const Rectangle& area = request.area;
    if (area.Empty()) return;
    painter.save();
    BeginRuler(painter, area, RulerRoom::kColumn, colours);
    request.labelHeight = LevelLabelHeight(painter.font());
    request.labelAbove = LabelAbove(painter.font());
    const QColor colour = painter.pen().color();
    FillLine(painter, QRect(area.left, area.top, 1, area.Height()), colour);
    for (const LevelTick& tick : LayOutVerticalRuler(request)) {
        FillLine(painter, QRect(area.left, tick.y, kLevelTick, 1), colour);
        if (!tick.label.empty())
            DrawNarrowed(painter, ToQString(tick.label), {tick.labelX, tick.labelY}, area.right);
    }
    painter.restore();
}

}  // namespace sonavel
