// Where a sample value lies within a lane: the level zoom as a mapping from values to pixels.
#pragma once

#include <cstdint>

#include "sound/sample_types.h"
#include "view/state/scroll_state.h"

namespace sonavel {

class LevelMap {
  public:
    // The vertical state, the full-scale value F (256 or 65536) and the lane's height in pixels.
    LevelMap(const ScrollState& vertical, std::int64_t fullScale, int laneHeight);

    // Hr / page: 1 when the whole lane is visible.
    double Zoom() const { return zoom_; }
    std::int64_t FullScale() const { return fullScale_; }

    // Pixels below the lane's top; any value, also outside the lane.
    std::int64_t Y(std::int64_t value) const;
    // As Y, but -2 for what lies above the lane and the lane's height for what lies below.
    int DrawnY(std::int64_t value) const;
    // The line of silence, with the rounding of its own that the centre line has.
    std::int64_t CentreY() const;

  private:
    double zoom_ = 1.0;
    std::int64_t offset_ = 0;
    std::int64_t fullScale_ = 0;
    int laneHeight_ = 0;
};

}  // namespace sonavel
