// One axis of a view's zoom over all sizes of its window. A resize starts from what the last zoom
// or scroll left and never from the resize before: truncations do not add up, and a window that
// comes back to its old size finds its old zoom.
#pragma once

#include <cstdint>

#include "view/state/scroll_state.h"

namespace sonavel {

class ZoomAxis {
  public:
    ZoomAxis() = default;
    // The extent of the waveform along the axis in pixels.
    explicit ZoomAxis(std::int64_t extent) : extent_(extent), startExtent_(extent) {}

    const ScrollState& Now() const { return now_; }
    // What a zoom or a scroll led to at the present extent. The state that is there already changes
    // nothing, so that scrolling against an end keeps the way back.
    void Set(const ScrollState& state);
    // An extent below 1 keeps the state of the last usable one; after none such there is `fit`.
    void Resize(std::int64_t extent, const ScrollState& fit);

  private:
    ScrollState now_;
    std::int64_t extent_ = 0;
    // What the last zoom or scroll left, and the extent then.
    ScrollState start_;
    std::int64_t startExtent_ = 0;
};

}  // namespace sonavel
