// What is selected in a view, and the two ends from which the cursor's moves go on.
#pragma once

#include <cstdint>

#include "sound/frame_range.h"

namespace sonavel {

// The frames that count as selected: drawn, played, edited and measured.
using Selection = FrameRange;

// As the moves leave them. Moving the start past the end is not refused; the selection is then what
// lies between the two, and the next move finds each where it was left.
struct SelectionEnds {
    std::uint32_t start = 0;
    std::uint32_t end = 0;

    Selection Range() const { return RangeBetween(start, end); }
    bool operator==(const SelectionEnds&) const = default;
};

}  // namespace sonavel
