#include "codec/float_scrub.h"

#include <algorithm>
#include <bit>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kExponent = 0x7F800000;
constexpr std::size_t kBlock = 4096;  // its count fits the width of a vector's lanes

SONAVEL_VECTOR_CLONES std::uint32_t ScrubBlock(float* values, std::size_t count) {
    std::uint32_t silenced = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto bits = std::bit_cast<std::uint32_t>(values[i]);
        const std::uint32_t isBad = (bits & kExponent) == kExponent ? 1u : 0u;
        values[i] = std::bit_cast<float>(bits & (isBad - 1u));
        silenced += isBad;
    }
    return silenced;
}

}  // namespace

std::uint64_t SilenceNonFinite(std::span<float> values) {
    std::uint64_t silenced = 0;
    for (; !values.empty(); values = values.subspan(std::min(values.size(), kBlock)))
        silenced += ScrubBlock(values.data(), std::min(values.size(), kBlock));
    return silenced;
}

}  // namespace sonavel
