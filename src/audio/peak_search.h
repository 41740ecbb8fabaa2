// The greatest sample magnitudes of interleaved sound data, for the level meters.
#pragma once

#include <cstdint>
#include <span>

namespace sonavel {

// The layout of interleaved sound data.
struct SampleLayout {
    unsigned channels = 1;
    unsigned bits = 16;
};

struct ChannelPeaks {
    std::int32_t left = 0;
    std::int32_t right = 0;
};

inline constexpr std::int32_t kNoPeak = -999999;
inline constexpr std::int32_t kNoBlockPeak = -9999999;

// Per channel, the greatest |sample| of whole frames: 0 to 32768 for 16 bits, |128 - byte| for 8; a
// mono sound's peak on both. kNoPeak for no frames.
ChannelPeaks PeaksOfFrames(std::span<const std::uint8_t> frames, SampleLayout layout);

// Likewise for one channel of a raw device block, kNoBlockPeak for an empty one.
std::int32_t PeakOfBlock(std::span<const std::uint8_t> block, SampleLayout layout,
                         unsigned channel);

}  // namespace sonavel
