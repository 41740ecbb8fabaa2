#include "effects/effect_range.h"

#include <algorithm>

namespace sonavel {

EffectRange RangeToWorkOn(std::uint32_t selectionStart, std::uint32_t selectionEnd,
                          std::uint32_t frameCount, RangeStart rule) {
    if (selectionStart == selectionEnd) return {0, frameCount};
    const auto [smaller, greater] = std::minmax(selectionStart, selectionEnd);
    const std::uint32_t wanted = rule == RangeStart::kSelectionStart ? selectionStart : smaller;
    const std::uint32_t start = std::min(wanted, frameCount);
    return {start, std::min(greater - smaller, frameCount - start)};
}

}  // namespace sonavel
