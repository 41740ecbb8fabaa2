#include "view/state/repaint_notes.h"

#include <algorithm>

namespace sonavel {

void RepaintNotes::TimeAreas() const {
    Area(ViewArea::kWaveform);
    Area(ViewArea::kHorizontalRuler);
    Area(ViewArea::kMarkerStrip);
}

void RepaintNotes::Frames(const ViewGeometry& geometry, const PixelMap& map, std::uint32_t a,
                          std::uint32_t b) const {
    constexpr std::int64_t kColumnReach = 3;
    constexpr std::int64_t kRulerReach = 8;
    const Rectangle& waveform = geometry.waveform;
    const std::int64_t width = waveform.Width();
    // The cursor stays visible at the right edge, so places beyond it repaint that edge.
    const std::int64_t first = std::clamp<std::int64_t>(map.X(std::min(a, b)), 0, width);
    const std::int64_t last = std::clamp<std::int64_t>(map.X(std::max(a, b)), 0, width);
    const auto strip = [&](const Rectangle& area, std::int64_t reach) {
        const Rectangle around = {waveform.left + static_cast<int>(first - reach), area.top,
                                  waveform.left + static_cast<int>(last + reach + 1), area.bottom};
        const Rectangle visible = around.Intersected(area);
        if (!visible.Empty()) window_->InvalidateRectangle(visible);
    };
    strip(waveform, kColumnReach);
    strip(geometry.horizontalRuler, kRulerReach);
}

}  // namespace sonavel
