// Where an edit works, and where it leaves selection and cursor.
#pragma once

#include <cstdint>

namespace sonavel {

// Frames; the selection is [startFrame, endFrame), empty when the end is not behind the start.
struct EditSelection {
    std::uint32_t startFrame = 0;
    std::uint32_t endFrame = 0;
    std::uint32_t cursorFrame = 0;

    bool IsEmpty() const { return endFrame <= startFrame; }
    std::uint32_t Frames() const { return IsEmpty() ? 0 : endFrame - startFrame; }
    bool operator==(const EditSelection&) const = default;
};

}  // namespace sonavel
