// The full state of a scroll bar, with the clamping that scroll bars do themselves. Both zooms of a
// view live in such states: a range is a virtual width or height in pixels.
#pragma once

#include <cstdint>

namespace sonavel {

// A page as large as the range, once it is clamped.
inline constexpr std::int64_t kWholeRangePage = 0xFFFFFFFF;

enum class ScrollStep { kLineBack, kLineForward, kPageBack, kPageForward, kToStart, kToEnd };

struct ScrollState {
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t page = 0;  // 0 .. maximum - minimum + 1
    std::int64_t position = 0;

    std::int64_t Range() const { return maximum - minimum; }
    // The greatest position that the bar takes: maximum - page + 1, without a page maximum.
    std::int64_t LastPosition() const;

    // Each returns a state whose page lies within the range, and whose position lies between
    // minimum and LastPosition().
    ScrollState Clamped() const;
    // Range 0 .. newMaximum (below 0 counts as 0); the page is kept as far as it fits.
    ScrollState WithRange(std::int64_t newMaximum, std::int64_t newPosition) const;
    // Thumb tracking and programmatic scrolling.
    ScrollState WithPosition(std::int64_t newPosition) const;
    // A line is 1 pixel, a page is 10.
    ScrollState Stepped(ScrollStep step) const;
    // The state that keeps the zoom when the visible extent, in pixels, changes from `oldExtent` to
    // `newExtent`. Unchanged when one of them is below 1, so that the caller may go on with the
    // last extent that was usable.
    ScrollState Resized(std::int64_t oldExtent, std::int64_t newExtent) const;

    bool operator==(const ScrollState&) const = default;
};

}  // namespace sonavel
