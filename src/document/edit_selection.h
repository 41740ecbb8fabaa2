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

struct EditResult {
    bool done = false;        // false: the sound is as it was, the document's last error says why
    EditSelection selection;  // as given when nothing was done
    std::uint32_t firstChangedFrame = 0;
};

}  // namespace sonavel
