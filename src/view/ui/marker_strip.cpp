#include "view/ui/marker_strip.h"

#include <QPolygonF>
#include <algorithm>
#include <limits>

#include "platform/code_page_949.h"
#include "view/ui/qt_values.h"

namespace sonavel {

namespace {

constexpr int kMarkerFontPixels = 9;
constexpr int kFlagHeight = 6;
constexpr int kBarHeight = 3;
constexpr int kBarAlpha = 150;
constexpr int kLabelGap = 4;
// No label is drawn from further left than this.
constexpr std::int64_t kLongestLabel = 2000;

std::vector<const Marker*> ByPosition(const MarkerList& markers) {
    std::vector<const Marker*> sorted;
    for (const Marker& marker : markers.All()) sorted.push_back(&marker);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Marker* a, const Marker* b) { return a->position < b->position; });
    return sorted;
}

int ToInt(std::int64_t value) {
    constexpr std::int64_t kLimit = std::numeric_limits<int>::max() / 2;
    return static_cast<int>(std::clamp(value, -kLimit, kLimit));
}

void PaintFlag(QPainter& painter, int x, int top, int bottom) {
    const QColor colour = painter.pen().color();
    painter.fillRect(x, top, 1, bottom - top, colour);
    const QPointF pennant[] = {{x + 1.0, top + 0.0},
                               {x + kFlagWidth + 0.0, top + kFlagHeight / 2.0},
                               {x + 1.0, top + kFlagHeight + 0.0}};
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setBrush(colour);
    const QPen pen = painter.pen();
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(pennant, 3);
    painter.setPen(pen);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace

std::vector<MarkerSign> LayOutMarkers(const Rectangle& area, const PixelMap& map,
                                      const MarkerList& markers, const TextWidth& textWidth) {
    std::vector<MarkerSign> signs;
    if (!map.Usable()) return signs;
    int freeFrom = std::numeric_limits<int>::min();
    for (const Marker* marker : ByPosition(markers)) {
        const std::int64_t x = area.left + map.X(marker->position);
        const std::int64_t end = std::int64_t{marker->position} + marker->length;
        const std::int64_t right = area.left + map.X(end) + 1;
        if (x >= area.right) break;
        if (std::max(right, x + kLongestLabel) < area.left) continue;
        MarkerSign sign{marker->id, ToInt(x), {}, ToInt(x) + kFlagWidth + 1, {}};
        if (marker->length) sign.barRight = ToInt(right);
        const std::string label = DisplayText(marker->name);
        if (sign.labelX >= freeFrom) {
            sign.label = label;
            freeFrom = sign.labelX + textWidth(label) + kLabelGap;
        }
        signs.push_back(std::move(sign));
    }
    return signs;
}

QFont MarkerFont() {
    QFont font = RulerFont(kMarkerFontPixels);
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("NanumGothic")});
    font.setStyleHint(QFont::SansSerif);
    return font;
}

void PaintMarkerStrip(QPainter& painter, const Rectangle& area,
                      const std::vector<MarkerSign>& signs, const ColourTable& colours) {
    painter.save();
    painter.setClipRect(ToQRect(area), Qt::IntersectClip);
    painter.fillRect(ToQRect(area), ToQColor(colours[ColourSlot::kMarkerStrip]));
    const QColor flagColour = ToQColor(colours[ColourSlot::kEndOfSound]);
    QColor barColour = flagColour;
    barColour.setAlpha(kBarAlpha);
    for (const MarkerSign& sign : signs)
        if (sign.barRight)
            painter.fillRect(sign.x, area.bottom - kBarHeight, *sign.barRight - sign.x, kBarHeight,
                             barColour);
    painter.setFont(MarkerFont());
    painter.setPen(ToQColor(colours[ColourSlot::kMarkerLabel]));
    for (const MarkerSign& sign : signs)
        painter.drawText(QRect(sign.labelX, area.top - 1, area.right - sign.labelX, area.Height()),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip | Qt::TextSingleLine,
                         ToQString(sign.label));
    painter.setPen(flagColour);
    for (const MarkerSign& sign : signs) PaintFlag(painter, sign.x, area.top, area.bottom);
    painter.restore();
}

}  // namespace sonavel
