#include "audio/peak_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace sonavel {
namespace {

std::int32_t Peak16(std::span<const std::uint8_t> data, std::size_t step, std::size_t first,
                    std::int32_t peak) {
    const std::size_t count = data.size() / 2;
    for (std::size_t i = first; i < count; i += step) {
        std::int16_t sample;
        std::memcpy(&sample, data.data() + i * 2, sizeof sample);
        peak = std::max<std::int32_t>(peak, std::abs(static_cast<std::int32_t>(sample)));
    }
    return peak;
}

std::int32_t Peak8(std::span<const std::uint8_t> data, std::size_t step, std::size_t first,
                   std::int32_t peak) {
    for (std::size_t i = first; i < data.size(); i += step)
        peak = std::max(peak, std::abs(128 - static_cast<std::int32_t>(data[i])));
    return peak;
}

}  // namespace

ChannelPeaks PeaksOfFrames(std::span<const std::uint8_t> frames, SampleLayout layout) {
    const auto search = layout.bits == 8 ? Peak8 : Peak16;
    const std::int32_t left = search(frames, layout.channels, 0, kNoPeak);
    return {left, layout.channels == 1 ? left : search(frames, layout.channels, 1, kNoPeak)};
}

std::int32_t PeakOfBlock(std::span<const std::uint8_t> block, SampleLayout layout,
                         unsigned channel) {
    // Intended oddity: of 8-bit blocks every byte counts, so both meters show the louder channel.
    if (layout.bits == 8) return Peak8(block, 1, 0, kNoBlockPeak);
    return Peak16(block, layout.channels, channel, kNoBlockPeak);
}

}  // namespace sonavel
