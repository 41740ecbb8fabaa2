#include "view/state/level_map.h"

#include <algorithm>

namespace sonavel {

LevelMap::LevelMap(const ScrollState& vertical, std::int64_t fullScale, int laneHeight)
    : fullScale_(fullScale), laneHeight_(laneHeight) {
    const std::int64_t range = vertical.Range();
    const std::int64_t page = std::min(vertical.page, range);
    if (page > 0) zoom_ = static_cast<double>(range) / static_cast<double>(page);
    offset_ = (range - page) / 2 - vertical.position;
}

std::int64_t LevelMap::Y(std::int64_t value) const {
    // Single precision decides on which side of a pixel's edge a value falls.
    const auto scaled = static_cast<float>(static_cast<double>(-value) * zoom_);
    return static_cast<std::int64_t>((scaled / static_cast<double>(fullScale_) + 0.5) *
                                     laneHeight_) +
           offset_;
}

int LevelMap::DrawnY(std::int64_t value) const {
    const std::int64_t y = Y(value);
    if (y < 0) return -2;
    return static_cast<int>(std::min<std::int64_t>(y, laneHeight_));
}

std::int64_t LevelMap::CentreY() const {
    return laneHeight_ / 2 + offset_;
}

}  // namespace sonavel
