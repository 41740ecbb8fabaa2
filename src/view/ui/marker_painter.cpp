#include "view/ui/marker_painter.h"

#include "platform/qt/device_line.h"
#include "view/draw/marker_strip.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kMarkerFontPixels = 10;
constexpr double kPennantHeight = 6;
constexpr int kBarAlpha = 150;

QFont MarkerFont() {
    QFont font({QStringLiteral("DejaVu Sans"), QStringLiteral("NanumGothic")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kMarkerFontPixels);
    return font;
}

// Cut, with an ellipsis, where the next flag stands.
void PaintLabel(QPainter& painter, const Rectangle& area, const MarkerFlag& flag) {
    const int room = flag.labelEnd - flag.labelX;
    painter.drawText(QRect(flag.labelX, area.top, room, area.Height()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(ToQString(flag.label), Qt::ElideRight, room));
}

void PaintFlag(QPainter& painter, const Rectangle& flag) {
    const QColor colour = painter.pen().color();
    FillLine(painter, QRect(flag.left, flag.top, 1, flag.Height()), colour);
    const QPointF pennant[] = {{flag.left + 1.0, double(flag.top)},
                               {double(flag.right), flag.top + kPennantHeight / 2},
                               {flag.left + 1.0, flag.top + kPennantHeight}};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(pennant, 3);
    painter.restore();
}

}  // namespace

void PaintMarkerStrip(QPainter& painter, const CSoundView& view) {
    const Rectangle& area = view.State().Geometry().markerStrip;
    if (area.Empty()) return;
    const std::vector<MarkerFlag> flags = LayOutMarkerStrip(
        area, view.Zoom().Pixels(), view.Sound().Markers(), WidthIn(MarkerFont()));
    const QColor flagColour = ToQColor(view.Settings().colours[ColourSlot::kEndOfSound]);
    QColor barColour = flagColour;
    barColour.setAlpha(kBarAlpha);
    painter.save();
    painter.setClipRect(ToQRect(area), Qt::IntersectClip);
    painter.fillRect(ToQRect(area), ToQColor(view.Settings().colours[ColourSlot::kMarkerStrip]));
    for (const MarkerFlag& flag : flags)
        if (!flag.region.Empty()) painter.fillRect(ToQRect(flag.region), barColour);
    painter.setFont(MarkerFont());
    painter.setPen(ToQColor(view.Settings().colours[ColourSlot::kMarkerLabel]));
    for (const MarkerFlag& flag : flags)
        if (!flag.label.empty()) PaintLabel(painter, area, flag);
    painter.setPen(flagColour);
    for (const MarkerFlag& flag : flags)
        if (!flag.flag.Empty()) PaintFlag(painter, flag.flag);
    painter.restore();
}

}  // namespace sonavel
