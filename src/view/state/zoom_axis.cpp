#include "view/state/zoom_axis.h"

namespace sonavel {

void ZoomAxis::Set(const ScrollState& state) {
    if (state == now_) return;
    now_ = state;
    start_ = state;
    startExtent_ = extent_;
}

void ZoomAxis::Resize(std::int64_t extent, const ScrollState& fit) {
    if (extent < 1) return;
    const bool isFirst = extent_ < 1;
    extent_ = extent;
    if (isFirst) {
        now_ = start_ = fit;
        startExtent_ = extent;
    } else {
        now_ = start_.Resized(startExtent_, extent);
    }
}

}  // namespace sonavel
