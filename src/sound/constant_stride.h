// A loop over the samples of one channel, or of all.
#pragma once

#include <cstddef>
#include <type_traits>

namespace sonavel {

// Calls the loop with the stride, 1 or 2, as a constant, which is what lets it vectorise. Inlined,
// so that the loop belongs to the clones of its caller.
template <class Loop>
[[gnu::always_inline]] inline void WithConstantStride(std::size_t stride, const Loop& loop) {
    if (stride == 1)
        loop(std::integral_constant<std::size_t, 1>{});
    else
        loop(std::integral_constant<std::size_t, 2>{});
}

}  // namespace sonavel
