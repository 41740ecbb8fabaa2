// Every conversion between frames and pixels. The virtual width W is that of the whole sound of N
// frames; the scroll position P is the virtual pixel at the left edge of the waveform. All
// divisions truncate.
#pragma once

#include <cstdint>

#include "view/state/scroll_state.h"

namespace sonavel {

class PixelMap {
  public:
    PixelMap() = default;
    // Counts and widths below 0 count as 0; all values stay below 2^31.
    PixelMap(std::int64_t frameCount, const ScrollState& horizontal);

    std::int64_t FrameCount() const { return frameCount_; }
    std::int64_t VirtualWidth() const { return virtualWidth_; }
    std::int64_t Position() const { return position_; }
    // False for an empty sound or no width: conversions then give 0.
    bool Usable() const { return frameCount_ > 0 && virtualWidth_ > 0; }

    // Pixels of the virtual width from frame 0; frame x W / N.
    std::int64_t VirtualX(std::int64_t frame) const;
    // Pixels from the left edge of the waveform; negative left of it.
    std::int64_t X(std::int64_t frame) const;
    // The first frame of the column x pixels from the waveform's left edge: (x + P) x N / W. Not
    // clamped to the sound.
    std::int64_t FrameAt(std::int64_t x) const;
    // The same clamped to 0 .. N: what a mouse position means.
    std::int64_t NearestFrameAt(std::int64_t x) const;
    // A length: pixels x N / W.
    std::int64_t FramesIn(std::int64_t pixels) const;

    // N / W, 0 when W is below 1.
    std::int64_t FramesPerPixel() const;
    // W / waveformWidth x 100, 0 when W or the width is below 1.
    double TimePercent(int waveformWidth) const;

  private:
    std::int64_t frameCount_ = 0;
    std::int64_t virtualWidth_ = 0;
    std::int64_t position_ = 0;
};

}  // namespace sonavel
