#include "effects/running_sum.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

constexpr int kDigits = std::numeric_limits<float>::digits;
constexpr std::int64_t kLeastMantissa = std::int64_t{1} << (kDigits - 1);
constexpr std::int64_t kAboveMantissas = std::int64_t{1} << kDigits;

int Exponent(float value) {
    int exponent = 0;
    std::frexp(value, &exponent);
    return exponent;
}

bool ShareBinade(float a, float b) {
    return std::isnormal(a) && std::isnormal(b) && std::signbit(a) == std::signbit(b) &&
           Exponent(a) == Exponent(b);
}

// How many increments leave the value between, and not at, the ends of its binade.
std::int64_t StepsInside(float value, float increment) {
    if (increment == 0) return std::numeric_limits<std::int64_t>::max();
    const int shift = kDigits - Exponent(value);
    const auto mantissa = static_cast<std::int64_t>(std::ldexp(std::abs(value), shift));
    const double away = value < 0 ? -increment : increment;
    const auto each = static_cast<std::int64_t>(std::ldexp(away, shift));
    if (each > 0) return (kAboveMantissas - 1 - mantissa) / each;
    return std::max<std::int64_t>((mantissa - kLeastMantissa - 1) / -each, 0);
}

}  // namespace

// Inside a binade every float is as far from the next as any other, so that a step is rounded alike
// everywhere; but where it ends midway between two floats, the first step may differ from the
// others, which go from an even float to an even one.
RunningSum::Stretch RunningSum::NextStretch(std::uint32_t atMost) const {
    const float first = Next(value_);
    const float second = Next(first);
    if (!ShareBinade(value_, first) || !ShareBinade(first, second)) return {1, first, 0};
    const float increment = second - first;
    const std::int64_t further =
        std::min<std::int64_t>(StepsInside(first, increment), std::int64_t{atMost} - 1);
    return {1 + static_cast<std::uint32_t>(further), first, increment};
}

void RunningSum::Skip(std::uint32_t steps) {
    while (steps > 0) {
        const Stretch stretch = NextStretch(steps);
        const double further = stretch.steps - 1;
        value_ = static_cast<float>(stretch.first + further * stretch.increment);
        steps -= stretch.steps;
    }
}

SONAVEL_VECTOR_CLONES
void RunningSum::Take(std::span<float> values) {
    while (!values.empty()) {
        const Stretch stretch = NextStretch(static_cast<std::uint32_t>(values.size()));
        values[0] = value_;
        float* further = values.data() + 1;
        const auto count = static_cast<std::int32_t>(stretch.steps - 1);
        for (std::int32_t i = 0; i < count; ++i)
            further[i] = stretch.first + static_cast<float>(i) * stretch.increment;
        value_ = stretch.first + static_cast<float>(count) * stretch.increment;
        values = values.subspan(stretch.steps);
    }
}

std::vector<RunningSum> SumsAtPieces(RunningSum sum, std::uint32_t runFrames,
                                     std::uint32_t pieceFrames) {
    std::vector<RunningSum> sums;
    for (std::uint32_t done = 0; done < runFrames;
         done += std::min(pieceFrames, runFrames - done)) {
        sums.push_back(sum);
        sum.Skip(pieceFrames);
    }
    return sums;
}

}  // namespace sonavel
