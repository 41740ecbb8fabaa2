#include "effects/effect_range.h"

#include "sound/frame_range.h"

namespace sonavel {

EffectRange RangeToWorkOn(std::uint32_t selectionStart, std::uint32_t selectionEnd,
                          std::uint32_t frameCount) {
    if (selectionStart == selectionEnd) return {0, frameCount};
    const FrameRange range = RangeBetween(selectionStart, selectionEnd).ClampedTo(frameCount);
    return {range.start, range.Frames()};
}

}  // namespace sonavel
