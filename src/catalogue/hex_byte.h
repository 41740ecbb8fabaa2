// Bytes that cannot stand where they are, as two hexadecimal digits.
#pragma once

#include <string>

namespace sonavel {

inline void AppendHex(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
}

}  // namespace sonavel
