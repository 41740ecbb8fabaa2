// The checksum of records: CRC-32 as ISO 3309 has it (polynomial 0x04C11DB7, bits reflected).
#pragma once

#include <cstdint>
#include <span>

namespace sonavel::recovery {

// Goes on from the checksum of what was before; 0 at the beginning.
std::uint32_t Crc32(std::span<const std::uint8_t> bytes, std::uint32_t before = 0);

}  // namespace sonavel::recovery
