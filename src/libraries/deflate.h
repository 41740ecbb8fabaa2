// Compression and check sums as PNG and ZIP files have them, by the zlib library.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace sonavel {

// The bytes as a zlib stream (RFC 1950); nothing when memory is short.
std::optional<std::vector<std::uint8_t>> Deflated(std::span<const std::uint8_t> bytes);

// CRC-32 of the bytes.
std::uint32_t CheckSum(std::span<const std::uint8_t> bytes);

}  // namespace sonavel
