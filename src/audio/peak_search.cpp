#include "audio/peak_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <type_traits>

#include "sound/sample_types.h"

namespace sonavel {
namespace {

template <class Type>
std::int32_t PeakOf(std::span<const std::uint8_t> data, std::size_t step, std::size_t first,
                    std::int32_t peak) {
    const auto samples = SamplesOf<Type>(data);
    for (std::size_t i = first; i < samples.size(); i += step)
        peak = std::max(peak, std::abs(Type::LevelOf(samples[i])));
    return peak;
}

}  // namespace

ChannelPeaks PeaksOfFrames(std::span<const std::uint8_t> frames, SampleLayout layout) {
    return VisitSampleType(layout.bits, [&](auto type) -> ChannelPeaks {
        const auto peakOf = [&](std::size_t channel) {
            return PeakOf<decltype(type)>(frames, layout.channels, channel, kNoPeak);
        };
        return {peakOf(0), peakOf(layout.channels == 1 ? 0 : 1)};
    });
}

std::int32_t PeakOfBlock(std::span<const std::uint8_t> block, SampleLayout layout,
                         unsigned channel) {
    return VisitSampleType(layout.bits, [&](auto type) {
        using Type = decltype(type);
        // Intended oddity: of 8-bit blocks every byte counts, so both meters show the louder
        // channel.
        if (std::is_same_v<Type, ByteSample>) return PeakOf<Type>(block, 1, 0, kNoBlockPeak);
        return PeakOf<Type>(block, layout.channels, channel, kNoBlockPeak);
    });
}

}  // namespace sonavel
