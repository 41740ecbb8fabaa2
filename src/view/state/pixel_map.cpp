#include "view/state/pixel_map.h"

#include <algorithm>

namespace sonavel {

PixelMap::PixelMap(std::int64_t frameCount, const ScrollState& horizontal)
    : frameCount_(std::max<std::int64_t>(frameCount, 0)),
      virtualWidth_(std::max<std::int64_t>(horizontal.maximum, 0)),
      position_(horizontal.position) {}

std::int64_t PixelMap::VirtualX(std::int64_t frame) const {
    return Usable() ? frame * virtualWidth_ / frameCount_ : 0;
}

std::int64_t PixelMap::X(std::int64_t frame) const {
    return Usable() ? VirtualX(frame) - position_ : 0;
}

std::int64_t PixelMap::FrameAt(std::int64_t x) const {
    return FramesIn(x + position_);
}

std::int64_t PixelMap::NearestFrameAt(std::int64_t x) const {
    return std::clamp<std::int64_t>(FrameAt(x), 0, frameCount_);
}

std::int64_t PixelMap::FramesIn(std::int64_t pixels) const {
    return Usable() ? pixels * frameCount_ / virtualWidth_ : 0;
}

std::int64_t PixelMap::FramesPerPixel() const {
    return virtualWidth_ < 1 ? 0 : frameCount_ / virtualWidth_;
}

double PixelMap::TimePercent(int waveformWidth) const {
    if (virtualWidth_ < 1 || waveformWidth < 1) return 0;
    return static_cast<double>(virtualWidth_) / waveformWidth * 100;
}

}  // namespace sonavel
