// The frames of a sound's range as a source's signal: channel 0 alone, as floats in the units of
// the sound's own samples.
#pragma once

#include <cstdint>
#include <span>

#include "sound/frame_range.h"
#include "sound/sound.h"
#include "spatial/block_filter.h"

namespace sonavel {

struct RangeInput {
    const Sound& sound;
    FrameRange range;

    // A block of 768 frames with the 256 samples before it; those before the range are silent, and
    // one frame past its end is still heard.
    void ReadBlock(std::size_t block, std::span<float, kBlockInput> samples) const;
    // From this frame of the range on; what lies outside the range is silent.
    void Read(std::int64_t first, std::span<float> samples) const;
};

}  // namespace sonavel
