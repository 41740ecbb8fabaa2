// Conversions of whole sample blocks between widths and channel counts.
#pragma once

#include <cstdint>
#include <span>

#include "platform/user_prompts.h"

namespace sonavel {

// Each byte b becomes the word (128 - b) * 256, wrapping to -32768 for b = 0. `to` holds as many
// words as `from` holds bytes.
void WidenSamples(std::span<const std::uint8_t> from, std::span<std::int16_t> to);
// Each word becomes 128 - its high byte, modulo 256. `to` holds as many bytes as `from` words.
void NarrowSamples(std::span<const std::int16_t> from, std::span<std::uint8_t> to);

// `to` holds two samples for each of `from`. A channel that the choice leaves out holds zeros, also
// with 8-bit samples, whose silence is 128.
void SpreadToStereo(std::span<const std::uint8_t> from, std::span<std::uint8_t> to,
                    ChannelChoice choice);
void SpreadToStereo(std::span<const std::int16_t> from, std::span<std::int16_t> to,
                    ChannelChoice choice);

// `from` holds two samples for each of `to`. The mean of two words is truncated toward zero, that
// of two bytes downward.
void FoldToMono(std::span<const std::uint8_t> from, std::span<std::uint8_t> to,
                ChannelChoice choice);
void FoldToMono(std::span<const std::int16_t> from, std::span<std::int16_t> to,
                ChannelChoice choice);

}  // namespace sonavel
