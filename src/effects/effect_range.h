// The frames that an effect works on.
#pragma once

#include <cstdint>

namespace sonavel {

struct EffectRange {
    std::uint32_t start = 0;
    std::uint32_t length = 0;

    std::uint32_t End() const { return start + length; }
    bool operator==(const EffectRange&) const = default;
};

// Extending to the right past a selection leaves its start behind its end; the effects differ in
// which of the two they begin at.
enum class RangeStart { kSelectionStart, kSmallerEnd };

// The selection, or the whole sound where nothing is selected; never beyond the sound.
EffectRange RangeToWorkOn(std::uint32_t selectionStart, std::uint32_t selectionEnd,
                          std::uint32_t frameCount, RangeStart rule);

}  // namespace sonavel
