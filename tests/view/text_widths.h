// Widths of texts for laying out labels without a font.
#pragma once

#include <string_view>

namespace sonavel {

// Digits of equal width, as most fonts have them.
inline int SevenPixelsEach(std::string_view text) {
    return static_cast<int>(text.size()) * 7;
}
// The widest digits are other ones than those of the longest label.
inline int Proportional(std::string_view text) {
    int width = 0;
    for (const char c : text) width += c == '1' || c == '.' ? 3 : 8;
    return width;
}

}  // namespace sonavel
