// The strip with the whole sound: its waveform as columns, the part that the view shows as a frame
// in it, and where a press or a drag of that frame scrolls the view.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "view/draw/block_extremes.h"
#include "view/state/pixel_map.h"

namespace sonavel {

// Rows [top, bottom) of a column, all channels together; at least one.
struct OverviewColumn {
    int top = 0;
    int bottom = 1;
};

// One column for each pixel of the width; none of an empty sound or strip. The extremes are those
// of the sound as it is.
std::vector<OverviewColumn> OverviewColumns(const Sound& sound, const BlockExtremes& extremes,
                                            int width, int height);

// Where a frame of the sound lies in a strip of that width, in pixels.
int OverviewX(std::int64_t frame, std::int64_t frameCount, int width);

// Pixels [left, right) of the strip, at least a few so that it can be taken.
struct OverviewFrame {
    int left = 0;
    int right = 0;

    bool operator==(const OverviewFrame&) const = default;
};
// `shownWidth`: of the view's waveform in its own pixels.
OverviewFrame FrameOfOverview(const PixelMap& view, int shownWidth, int width);

// A press and what follows until the button is let go. Results are scroll positions of the view.
class OverviewDrag {
  public:
    // Beside the frame its middle jumps there; on it nothing moves yet.
    std::optional<std::int64_t> Press(const PixelMap& view, int shownWidth, int width, int x);
    std::optional<std::int64_t> Move(const PixelMap& view, int width, int x);
    void Release() { grip_.reset(); }
    bool IsDragging() const { return grip_.has_value(); }

  private:
    // Virtual pixels from the left edge of what is shown to the pointer.
    std::optional<double> grip_;
};

}  // namespace sonavel
