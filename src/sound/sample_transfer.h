// Moving sample data between files and sounds whose bytes mean something else.
#pragma once

#include <cstdint>
#include <span>

#include "platform/replacing_file.h"
#include "sound/byte_source.h"

namespace sonavel {

// Changes a block in place.
using ByteTransform = void (*)(std::span<std::uint8_t> bytes);

// 16-bit samples between the byte orders; an odd last byte becomes 0.
void SwapBytePairs(std::span<std::uint8_t> bytes);
// Each byte + 128 modulo 256: between unsigned bytes around 128 and signed ones.
void AddHalfRange(std::span<std::uint8_t> bytes);
// Each byte becomes 128 - itself modulo 256.
void SubtractFromHalfRange(std::span<std::uint8_t> bytes);

// Fills `to` by transformed bytes of the source. Where the source ends too early, what is lacking
// is made from zeros. Returns how many bytes the source had.
std::size_t ReadTransformed(ByteCursor& cursor, std::span<std::uint8_t> to,
                            ByteTransform transform);
// False when the disk is full or fails.
bool WriteTransformed(ReplacingFile& file, std::span<const std::uint8_t> bytes,
                      ByteTransform transform);

}  // namespace sonavel
