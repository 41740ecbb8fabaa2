// A range of a sound's frames.
#pragma once

#include <algorithm>
#include <cstdint>

namespace sonavel {

// The frames [start, end); empty when the end is not behind the start.
struct FrameRange {
    std::uint32_t start = 0;
    std::uint32_t end = 0;

    bool IsEmpty() const { return end <= start; }
    std::uint32_t Frames() const { return IsEmpty() ? 0 : end - start; }
    bool Contains(std::uint32_t frame) const { return frame >= start && frame < end; }
    // Both ends at most `frameCount`.
    FrameRange ClampedTo(std::uint32_t frameCount) const {
        return {std::min(start, frameCount), std::min(end, frameCount)};
    }

    bool operator==(const FrameRange&) const = default;
};

// The range between two ends that come in either order.
inline FrameRange RangeBetween(std::uint32_t a, std::uint32_t b) {
    return {std::min(a, b), std::max(a, b)};
}

// What lies between the two ends of a selection, or the whole sound where they are one; never
// beyond the sound.
inline FrameRange RangeToWorkOn(std::uint32_t selectionStart, std::uint32_t selectionEnd,
                                std::uint32_t frameCount) {
    if (selectionStart == selectionEnd) return {0, frameCount};
    return RangeBetween(selectionStart, selectionEnd).ClampedTo(frameCount);
}

}  // namespace sonavel
