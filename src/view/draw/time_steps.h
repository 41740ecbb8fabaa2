// The distances at which a time ruler may set its ticks. Positions count in units: frames for
// sample numbers, milliseconds for the time formats.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "view/state/display_settings.h"
#include "view/state/pixel_map.h"

namespace sonavel {

class TimeSteps {
  public:
    // A sound without a rate is counted in frames.
    TimeSteps(StatusFormat format, std::uint32_t samplesPerSecond, const PixelMap& map);

    std::int64_t FrameOf(std::int64_t unit) const;
    std::int64_t UnitAt(std::int64_t frame) const;
    std::int64_t LastUnit() const { return UnitAt(map_.FrameCount()); }
    std::string Label(std::int64_t unit) const;

    // The least step, in units, that is at least so many pixels wide: 1, 2 or 5 times a power of
    // ten, and from a second on 1, 2, 5, 10, 15 or 30 seconds and minutes, then hours.
    std::int64_t LeastStep(int pixels) const;
    // The least step that divides `step` into at most ten parts of at least so many pixels; `step`
    // itself when none does.
    std::int64_t Subdivision(std::int64_t step, int pixels) const;

  private:
    double PixelsOf(std::int64_t units) const;

    StatusFormat format_;
    std::uint32_t samplesPerSecond_;
    PixelMap map_;
    std::vector<std::int64_t> steps_;  // ascending
};

}  // namespace sonavel
