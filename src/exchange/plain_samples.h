// Sounds whose samples lie in their file as plain numbers: integers of 8, 16, 24 and 32 bits and
// floats in WAV, RF64, W64, AIFF and AIFC files. They are read here, without a decoder.
#pragma once

#include <cstdint>
#include <optional>

#include "exchange/chunk_map.h"
#include "exchange/sample_packing.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"
#include "sound/sound_codecs.h"

namespace sonavel {

// How the numbers lie in the file.
struct PlainNumbers {
    FileDepth depth = FileDepth::kInteger;
    std::uint32_t bytes = 2;  // of a sample: 1 to 4, with floats 4 or 8
    ByteOrder order = ByteOrder::kLittle;
    EightBitZero zero = EightBitZero::kAt128;  // of single bytes
};

struct PlainSound {
    SoundFileDescription description;  // of the frames that are there
    PlainNumbers numbers;
    std::uint64_t dataOffset = 0;
    std::uint64_t statedFrames = 0;  // more than those of the description where the file was cut
};

// Nothing where the samples are coded, or the file says too little of them.
std::optional<PlainSound> FindPlainSound(RandomBytes& bytes, const ChunkMap& map);

// Hands the frames to the sink, as a decoder does.
Result<DecodedSound> ReadPlainSound(RandomBytes& bytes, const PlainSound& sound, FrameSink& sink);

// `from` holds whole numbers of the file; `to` has room for as many samples of that kind, in this
// machine's byte order: 8 and 16 bits as they are, all others as floats of the nominal range +-1.
// What is not a number or infinite becomes 0; returns how many were.
std::uint64_t UnpackSamples(std::span<const std::uint8_t> from, const PlainNumbers& numbers,
                            std::span<std::uint8_t> to);

}  // namespace sonavel
