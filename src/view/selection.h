// The selected frames of a view.
#pragma once

#include <cstdint>

namespace sonavel {

// The frames [start, end); empty when nothing is selected.
struct Selection {
    std::uint32_t start = 0;
    std::uint32_t end = 0;

    bool IsEmpty() const { return end <= start; }
    std::uint32_t Frames() const { return IsEmpty() ? 0 : end - start; }
    bool operator==(const Selection&) const = default;
};

}  // namespace sonavel
