// The bytes of a sound as samples of one width, for loops that the compiler vectorises.
#pragma once

#include <bit>
#include <cstdint>
#include <span>

namespace sonavel {

static_assert(std::endian::native == std::endian::little,
              "16-bit samples lie little-endian in memory and are used in place");

// The whole 16-bit samples of a sound's data; an odd last byte is left out. The block must be
// aligned for them, as every SoundBuffer is.
inline std::span<std::int16_t> Words(std::span<std::uint8_t> bytes) {
    return {reinterpret_cast<std::int16_t*>(bytes.data()), bytes.size() / 2};
}
inline std::span<const std::int16_t> Words(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const std::int16_t*>(bytes.data()), bytes.size() / 2};
}

}  // namespace sonavel
