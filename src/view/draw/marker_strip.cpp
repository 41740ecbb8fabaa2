#include "view/draw/marker_strip.h"

#include <algorithm>

#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr int kRegionHeight = 3;
constexpr int kLabelGap = 2;  // pixels between a flag and its label, and behind a label

int ClampedX(const Rectangle& strip, const PixelMap& map, std::int64_t frame) {
    const std::int64_t x = std::clamp<std::int64_t>(map.X(frame), -1, strip.Width() + 1);
    return strip.left + static_cast<int>(x);
}

MarkerFlag PlaceOf(const Rectangle& strip, const PixelMap& map, const Marker& marker) {
    MarkerFlag place;
    place.id = marker.id;
    const std::int64_t x = map.X(marker.position);
    if (x >= 0 && x < strip.Width()) {
        const int left = strip.left + static_cast<int>(x);
        place.flag = {left, strip.top, std::min(left + kMarkerFlagWidth, strip.right),
                      strip.bottom};
    }
    if (marker.length > 0) {
        const std::int64_t end = std::int64_t{marker.position} + marker.length;
        place.region =
            Rectangle{ClampedX(strip, map, marker.position), strip.bottom - kRegionHeight,
                      ClampedX(strip, map, end), strip.bottom}
                .Intersected(strip);
    }
    return place;
}

// From left to right, each where it does not reach into the flag or the label before it.
void PlaceLabels(std::vector<MarkerFlag>& places, const Rectangle& strip,
                 const TextWidth& textWidth) {
    std::vector<MarkerFlag*> byPosition;
    for (MarkerFlag& place : places)
        if (!place.flag.Empty()) byPosition.push_back(&place);
    std::stable_sort(
        byPosition.begin(), byPosition.end(),
        [](const MarkerFlag* a, const MarkerFlag* b) { return a->flag.left < b->flag.left; });
    int free = byPosition.empty() ? 0 : byPosition.front()->flag.left;
    for (MarkerFlag* place : byPosition) {
        place->labelX = place->flag.right + kLabelGap;
        if (place->flag.left < free) {
            place->label.clear();
            continue;
        }
        free = place->labelX + textWidth(place->label) + kLabelGap;
    }
    int end = strip.right;
    for (auto place = byPosition.rbegin(); place != byPosition.rend(); ++place) {
        (*place)->labelEnd = end;
        end = (*place)->flag.left - kLabelGap;
    }
}

}  // namespace

std::vector<MarkerFlag> LayOutMarkerStrip(const Rectangle& strip, const PixelMap& map,
                                          const MarkerList& markers, const TextWidth& textWidth) {
    std::vector<MarkerFlag> places;
    if (!map.Usable() || strip.Empty()) return places;
    for (const Marker& marker : markers.All()) {
        MarkerFlag place = PlaceOf(strip, map, marker);
        if (place.flag.Empty() && place.region.Empty()) continue;
        if (!place.flag.Empty()) place.label = DisplayText(marker.name);
        places.push_back(std::move(place));
    }
    PlaceLabels(places, strip, textWidth);
    return places;
}

}  // namespace sonavel
