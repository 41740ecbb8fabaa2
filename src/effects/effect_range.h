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

// What lies between the two ends of the selection, or the whole sound where they are one; never
// beyond the sound.
EffectRange RangeToWorkOn(std::uint32_t selectionStart, std::uint32_t selectionEnd,
                          std::uint32_t frameCount);

}  // namespace sonavel
