#include "sound/pair_buffer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/parallel.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// A second or so; small enough to stay in the processor's cache while several things are done to
// it.
constexpr std::size_t kPartFloats = std::size_t{1} << 17;

}  // namespace

SONAVEL_VECTOR_CLONES
void MultiplyBy(float factor, std::span<float> values) {
    for (float& value : values) value *= factor;
}

SONAVEL_VECTOR_CLONES
float PeakOf(std::span<const float> values) {
    // Several maxima at once: one alone would wait for itself at every value.
    std::array<float, 16> peaks{};
    std::size_t i = 0;
    for (; i + peaks.size() <= values.size(); i += peaks.size())
        for (std::size_t k = 0; k < peaks.size(); ++k)
            peaks[k] = std::max(peaks[k], std::abs(values[i + k]));
    for (; i < values.size(); ++i) peaks[0] = std::max(peaks[0], std::abs(values[i]));
    return *std::ranges::max_element(peaks);
}

void PairBuffer::Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values) {
    float* to = Pairs().data() + std::size_t{2} * firstFrame + slot;
    for (std::size_t i = 0; i < values.size(); ++i) to[2 * i] = values[i];
}

void PairBuffer::ForEachPart(const std::function<void(std::uint32_t, std::span<float>)>& change) {
    const std::span<float> pairs = Pairs();
    ComputeParts((pairs.size() + kPartFloats - 1) / kPartFloats, [&](std::size_t part) {
        const std::size_t first = part * kPartFloats;
        change(static_cast<std::uint32_t>(first / 2),
               pairs.subspan(first, std::min(kPartFloats, pairs.size() - first)));
    });
}

void PairBuffer::CopyLeftToRight() {
    ForEachPart([](std::uint32_t, std::span<float> pairs) {
        for (std::size_t i = 0; i < pairs.size(); i += 2) pairs[i + 1] = pairs[i];
    });
}

void PairBuffer::Scale(float factor) {
    ForEachPart([factor](std::uint32_t, std::span<float> pairs) { MultiplyBy(factor, pairs); });
}

void PairBuffer::Rescale(unsigned slot, float from, float to) {
    ForEachPart([=](std::uint32_t, std::span<float> pairs) {
        for (std::size_t i = slot; i < pairs.size(); i += 2) pairs[i] = pairs[i] / from * to;
    });
}

}  // namespace sonavel
