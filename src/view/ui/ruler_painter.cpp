#include "view/ui/ruler_painter.h"

#include <QPolygon>
#include <algorithm>

#include "view/rulers.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kMajorTick = 6;
constexpr int kMinorTick = 3;
constexpr int kLevelTick = 3;
constexpr int kMarkSize = 5;

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

HorizontalRuler LayOut(const CSoundView& view, const QFont& font) {
    HorizontalRulerRequest request;
    request.area = view.Geometry().horizontalRuler;
    request.map = view.Pixels();
    request.samplesPerSecond = view.Sound().GetSamplesPerSecond();
    request.format = view.GetStatusFormat();
    request.cursor = view.Cursor();
    request.selection = view.GetSelection();
    return LayOutHorizontalRuler(request, WidthIn(font));
}

}  // namespace

void PaintHorizontalRuler(QPainter& painter, const CSoundView& view) {
    const Rectangle& area = view.Geometry().horizontalRuler;
    if (area.Empty()) return;
    const QFont font = RulerFont(kRulerFontPixels);
    const HorizontalRuler ruler = LayOut(view, font);
    const QColor colour = ToQColor(view.Colours()[ColourSlot::kRulerText]);
    painter.save();
    painter.setClipRect(ToQRect(area), Qt::IntersectClip);
    painter.fillRect(ToQRect(area), ToQColor(view.Colours()[ColourSlot::kRulerBackground]));
    for (const TimeTick& tick : ruler.ticks)
        painter.fillRect(tick.x, area.top, 1,
                         tick.size == TickSize::kMajor ? kMajorTick : kMinorTick, colour);
    painter.setFont(font);
    painter.setPen(colour);
    for (const TimeLabel& label : ruler.labels) {
        const QString text = ToQString(label.text);
        // A label that would be cut at the right is not worth its place.
        if (label.x + painter.fontMetrics().horizontalAdvance(text) > area.right) continue;
        painter.drawText(QPoint(label.x, area.bottom - painter.fontMetrics().descent() - 1), text);
    }
    PaintMarks(painter, ruler, area.top, view.Colours());
    painter.restore();
}

void PaintVerticalRuler(QPainter& painter, const CSoundView& view) {
    const Rectangle& area = view.Geometry().verticalRuler;
    if (area.Empty()) return;
    const QColor colour = ToQColor(view.Colours()[ColourSlot::kRulerText]);
    painter.save();
    painter.setClipRect(ToQRect(area), Qt::IntersectClip);
    painter.fillRect(ToQRect(area), ToQColor(view.Colours()[ColourSlot::kRulerBackground]));
    painter.fillRect(area.left, area.top, 1, area.Height(), colour);
    painter.setFont(RulerFont(kRulerFontPixels - 1));
    painter.setPen(colour);
    const unsigned channels = view.Sound().GetChannels();
    for (unsigned channel = 0; channel < channels; ++channel) {
        const Rectangle lane = view.Geometry().Lane(channel, channels);
        const LevelMap levels(view.Vertical(), FullScaleOf(view.Sound().GetBits()), lane.Height());
        for (const LevelTick& tick :
             LayOutVerticalRuler({area.left, lane.top, area.right, lane.bottom}, levels)) {
            painter.fillRect(area.left, tick.y, kLevelTick, 1, colour);
            // The topmost label stands inside the ruler, beside its tick instead of across it.
            const int labelTop = std::max(tick.labelY, lane.top - 1);
            painter.drawText(QPoint(tick.labelX, labelTop + painter.fontMetrics().ascent()),
                             ToQString(tick.label));
        }
    }
    painter.restore();
}

}  // namespace sonavel
