// Text of foreign files, whose coding nobody vouches for, as UTF-8. The results end before the
// first NUL, without trailing spaces, and hold at most kMostTagBytes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace sonavel {

// As UTF-8 where the bytes are that, else as code page 949, else as Latin-1.
std::string Utf8FromUnknown(std::string_view bytes);
inline std::string Utf8FromUnknown(std::span<const std::uint8_t> bytes) {
    return Utf8FromUnknown({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

enum class Utf16Order : std::uint8_t { kLittle, kBig };
// A mark of the byte order at the beginning has the last word. Half pairs become U+FFFD.
std::string Utf8FromUtf16(std::span<const std::uint8_t> bytes, Utf16Order order);

// The longest beginning of a UTF-8 text that has at most so many bytes and ends with a character.
std::string_view Utf8Beginning(std::string_view text, std::size_t mostBytes);

}  // namespace sonavel
