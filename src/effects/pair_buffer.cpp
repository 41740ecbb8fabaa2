#include "effects/pair_buffer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "platform/parallel.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Some seconds, and a multiple of the pairs that PeakOf() takes at once.
constexpr std::size_t kPartFloats = std::size_t{1} << 19;

std::size_t PartsOf(std::span<const float> pairs) {
    return (pairs.size() + kPartFloats - 1) / kPartFloats;
}

template <class Float>
std::span<Float> PartOf(std::span<Float> pairs, std::size_t part) {
    const std::size_t first = part * kPartFloats;
    return pairs.subspan(first, std::min(kPartFloats, pairs.size() - first));
}

SONAVEL_VECTOR_CLONES
float PeakOf(std::span<const float> pairs, unsigned slot) {
    // Several maxima at once: one alone would wait for itself at every value.
    std::array<float, 16> peaks{};
    std::size_t i = slot;
    for (; i + 32 <= pairs.size(); i += 32)
        for (std::size_t k = 0; k < 16; ++k)
            peaks[k] = std::max(peaks[k], std::abs(pairs[i + 2 * k]));
    for (; i < pairs.size(); i += 2) peaks[0] = std::max(peaks[0], std::abs(pairs[i]));
    return *std::max_element(peaks.begin(), peaks.end());
}

}  // namespace

void PairBuffer::Put(unsigned slot, std::uint32_t firstFrame, std::span<const float> values) {
    float* to = Pairs().data() + std::size_t{2} * firstFrame + slot;
    for (std::size_t i = 0; i < values.size(); ++i) to[2 * i] = values[i];
}

void PairBuffer::ForEachPart(const std::function<void(std::uint32_t, std::span<float>)>& change) {
    const std::span<float> pairs = Pairs();
    ComputeParts(PartsOf(pairs), [&](std::size_t part) {
        change(static_cast<std::uint32_t>(part * kPartFloats / 2), PartOf(pairs, part));
    });
}

void PairBuffer::CopyLeftToRight() {
    ForEachPart([](std::uint32_t, std::span<float> pairs) {
        for (std::size_t i = 0; i < pairs.size(); i += 2) pairs[i + 1] = pairs[i];
    });
}

float PairBuffer::Peak(unsigned slot) const {
    const std::span<const float> pairs = block_.Floats();
    std::vector<float> peaks(PartsOf(pairs));
    ComputeParts(peaks.size(),
                 [&](std::size_t part) { peaks[part] = PeakOf(PartOf(pairs, part), slot); });
    return peaks.empty() ? 0 : *std::max_element(peaks.begin(), peaks.end());
}

void PairBuffer::Scale(float factor) {
    ForEachPart([factor](std::uint32_t, std::span<float> pairs) {
        for (float& value : pairs) value *= factor;
    });
}

void PairBuffer::Rescale(unsigned slot, float from, float to) {
    ForEachPart([=](std::uint32_t, std::span<float> pairs) {
        for (std::size_t i = slot; i < pairs.size(); i += 2) pairs[i] = pairs[i] / from * to;
    });
}

}  // namespace sonavel
