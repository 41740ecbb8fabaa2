// The head of a WAV file that comes through a pipe, whose sizes its writer did not know.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "sound/codec_values.h"

namespace sonavel {

struct WavStreamHead {
    FrameSamples samples = FrameSamples::kFloat32;
    std::uint32_t rate = 0;
    std::uint32_t channels = 0;
    std::uint32_t channelMask = 0;
};

// Fills the block; false when the stream ends before.
using StreamRead = std::function<bool(std::span<std::uint8_t>)>;

// Reads up to the first frame. Nothing when this is no WAV stream of 8- or 16-bit integers or
// 32-bit floats.
std::optional<WavStreamHead> ReadWavStreamHead(const StreamRead& read);

}  // namespace sonavel
