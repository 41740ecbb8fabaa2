#include "spatial/range_input.h"

#include <algorithm>

#include "sound/sample_io.h"

namespace sonavel {

void RangeInput::ReadBlock(std::size_t block, std::span<float, kBlockInput> samples) const {
    const auto done = static_cast<std::uint32_t>(block * kBlockFrames);
    const std::uint32_t history = done > 0 ? kBlockHistory : 0;
    // Intended: one frame past the range is still taken in, and is heard in its tail.
    const std::uint32_t left = range.Frames() + 1 - done;
    const std::span<float> heard =
        samples.subspan(kBlockHistory - history)
            .first(history + std::min<std::uint32_t>(left, kBlockFrames));
    std::fill(samples.begin(), samples.end(), 0.0f);
    ReadChannel(sound, 0, range.start + done - history, heard, EightBitReading::kFull);
}

void RangeInput::Read(std::int64_t first, std::span<float> samples) const {
    std::fill(samples.begin(), samples.end(), 0.0f);
    const auto count = static_cast<std::int64_t>(samples.size());
    const std::int64_t from = std::max<std::int64_t>(first, 0);
    const std::int64_t to = std::min<std::int64_t>(first + count, range.Frames());
    if (to <= from) return;
    ReadChannel(sound, 0, range.start + static_cast<std::uint32_t>(from),
                samples.subspan(static_cast<std::size_t>(from - first),
                                static_cast<std::size_t>(to - from)),
                EightBitReading::kFull);
}

}  // namespace sonavel
