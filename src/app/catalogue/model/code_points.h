// UTF-8 text as code points, and text made fit for comparing without regard to case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sonavel {

struct CodePoint {
    static constexpr char32_t kInvalid = 0xFFFFFFFF;

    char32_t value = kInvalid;  // kInvalid: the byte is no part of UTF-8 text
    std::size_t bytes = 1;
};

// The first code point of a text that is not empty.
CodePoint FirstCodePoint(std::string_view text);
void AppendCodePoint(std::string& text, char32_t value);

// Small letters for the capitals of the Latin, Greek, Cyrillic and Armenian alphabets; everything
// else, bytes outside UTF-8 included, stays.
std::string FoldCase(std::string_view text);

// The part of a text that fits into so many bytes; no code point is cut through.
std::string_view CutToBytes(std::string_view text, std::size_t mostBytes);

// Below, at or above 0 for the order of two folded texts, in which runs of digits count as numbers:
// "kick2" comes before "kick10".
int CompareNaturally(std::string_view a, std::string_view b);

}  // namespace sonavel
