#include "view/state/view_geometry.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr int kBottomRowHeight = 22;
constexpr int kZoomButtonWidth = 22;
constexpr int kZoomerWidth = 20;
constexpr int kMarkerStripHeight = 10;
constexpr int kBelowWaveform = 32;  // the bottom row and the marker strip
constexpr int kRulerThickness = 20;

Rectangle NeverNegative(Rectangle rectangle) {
    rectangle.right = std::max(rectangle.left, rectangle.right);
    rectangle.bottom = std::max(rectangle.top, rectangle.bottom);
    return rectangle;
}

Rectangle WaveformIn(const GeometryRequest& request) {
    Rectangle waveform = request.client;
    waveform.bottom -= kBelowWaveform;
    if (request.verticalRuler == RulerVisibility::kShown) waveform.right -= kRulerThickness;
    if (request.horizontalRuler == RulerVisibility::kShown) waveform.bottom -= kRulerThickness;
    return NeverNegative(waveform);
}

// Both pictures one above the other, with a line between them.
void LayOutPictures(SoundPicture picture, ViewGeometry& geometry) {
    const Rectangle& all = geometry.waveform;
    geometry.picture = picture;
    geometry.envelope = geometry.spectrogram = all;
    const int middle = all.top + all.Height() / 2;
    if (picture == SoundPicture::kWaveform) geometry.spectrogram.top = all.bottom;
    if (picture != SoundPicture::kBoth) return;
    geometry.envelope.bottom = middle;
    geometry.spectrogram.top = std::min(middle + 1, all.bottom);
}

Rectangle LaneOf(const Rectangle& area, unsigned channel, unsigned channels) {
    if (channels < 2) return area;
    const int half = area.Height() / 2;
    Rectangle lane = area;
    if (channel == 0) {
        lane.bottom = area.top + half - 2;
    } else {
        lane.top = area.top + half + 1;
    }
    return NeverNegative(lane);
}

void LayOutBottomRow(const Rectangle& client, ViewGeometry& geometry) {
    const int top = client.bottom - kBottomRowHeight;
    const int levelLeft = client.left + kZoomButtonWidth;
    const int barLeft = levelLeft + kZoomButtonWidth;
    const int barRight = client.right - kZoomerWidth;
    geometry.timeZoomButton = {client.left, top, levelLeft, client.bottom};
    geometry.levelZoomButton = {levelLeft, top, barLeft, client.bottom};
    geometry.horizontalScrollBar = NeverNegative({barLeft, top, barRight, client.bottom});
    geometry.zoomerButton = {barRight, top, client.right, client.bottom};
}

}  // namespace

ViewGeometry ViewGeometry::Layout(const GeometryRequest& request) {
    const Rectangle& client = request.client;
    ViewGeometry geometry;
    LayOutBottomRow(client, geometry);
    geometry.verticalScrollBar =
        NeverNegative({std::max(client.left, client.right - request.verticalScrollBarWidth),
                       client.top, client.right, client.bottom});
    const Rectangle waveform = WaveformIn(request);
    geometry.waveform = waveform;
    LayOutPictures(request.picture, geometry);
    geometry.verticalRuler =
        NeverNegative({waveform.right, waveform.top, client.right, waveform.bottom});
    geometry.markerStrip = NeverNegative(
        {waveform.left, waveform.bottom, client.right, waveform.bottom + kMarkerStripHeight});
    geometry.horizontalRuler = NeverNegative({waveform.left, waveform.bottom + kMarkerStripHeight,
                                              client.right, client.bottom - kBottomRowHeight});
    return geometry;
}

Rectangle ViewGeometry::Lane(unsigned channel, unsigned channels) const {
    return LaneOf(envelope, channel, channels);
}

Rectangle ViewGeometry::SpectrogramLane(unsigned channel, unsigned channels) const {
    return LaneOf(spectrogram, channel, channels);
}

Rectangle SelectionRect(const Rectangle& waveform, const PixelMap& map,
                        const Selection& selection) {
    if (map.VirtualX(selection.start) == map.VirtualX(selection.end)) return {};
    const auto clampedX = [&](std::int64_t frame) {
        return static_cast<int>(
            std::clamp<std::int64_t>(waveform.left + map.X(frame), waveform.left, waveform.right));
    };
    const Rectangle shifted{clampedX(selection.start) + 1, waveform.top,
                            clampedX(selection.end) + 1, waveform.bottom};
    const Rectangle visible = shifted.Intersected(waveform);
    return visible.Empty() ? Rectangle{} : visible;
}

Rectangle CursorRect(const Rectangle& waveform, const PixelMap& map, std::int64_t cursor) {
    if (!map.Usable()) return {};
    // A cursor right of the visible part stands at the right edge; one left of it is not drawn.
    const std::int64_t x =
        std::min<std::int64_t>(waveform.left + map.X(cursor), waveform.right - 2);
    const Rectangle column{static_cast<int>(std::max<std::int64_t>(x, waveform.left - 2) + 1),
                           waveform.top, 0, waveform.bottom};
    const Rectangle visible =
        Rectangle{column.left, column.top, column.left + 1, column.bottom}.Intersected(waveform);
    return visible.Empty() ? Rectangle{} : visible;
}

}  // namespace sonavel
