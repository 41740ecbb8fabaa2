// Frames as the editor has them, turned into the bytes of a file.
#pragma once

#include <cstdint>
#include <span>

#include "exchange/chunk_map.h"
#include "sound/codec_values.h"

namespace sonavel {

enum class EightBitZero : std::uint8_t { kAt128, kAt0 };

// How a file keeps its samples.
struct FileSamples {
    EncodedDepth depth = EncodedDepth::k16;
    ByteOrder order = ByteOrder::kLittle;
    EightBitZero zero = EightBitZero::kAt128;

    std::size_t Bytes() const;
};

// `from` holds whole samples of that kind in this machine's byte order; `to` has room for as many
// of the file's. What the depth cannot hold is rounded to the nearest and held at full scale; all
// else keeps its value. What is not a number becomes 0 in integers.
void PackSamples(std::span<const std::uint8_t> from, FrameSamples samples, const FileSamples& as,
                 std::span<std::uint8_t> to);

}  // namespace sonavel
