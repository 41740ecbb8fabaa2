#include "app/catalogue/model/code_points.h"

#include <algorithm>

namespace sonavel {
namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// What the first byte announces; 0 for a byte that begins nothing.
std::size_t AnnouncedBytes(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

bool IsScalarOfLength(char32_t value, std::size_t bytes) {
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    return value >= kLeast[bytes] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

// Alphabets in which capitals and small letters lie a fixed distance apart.
struct LetterRange {
    char32_t first;
    char32_t last;
    char32_t distance;
};
constexpr LetterRange kRanges[] = {
    {U'A', U'Z', 32},   {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},
    {0x391, 0x3A1, 32}, {0x3A3, 0x3AB, 32}, {0x400, 0x40F, 80},
    {0x410, 0x42F, 32}, {0x531, 0x556, 48}, {0xFF21, 0xFF3A, 32},
};
// Alphabets in which each capital stands just before its small letter, on even or odd numbers.
struct PairRange {
    char32_t first;
    char32_t last;
};
constexpr PairRange kPairs[] = {{0x100, 0x12F},   {0x132, 0x137},  {0x139, 0x148}, {0x14A, 0x177},
                                {0x179, 0x17E},   {0x460, 0x481},  {0x48A, 0x4BF}, {0x4D0, 0x52F},
                                {0x1E00, 0x1E95}, {0x1EA0, 0x1EFF}};

char32_t SmallLetter(char32_t letter) {
    for (const LetterRange& range : kRanges)
        if (letter >= range.first && letter <= range.last) return letter + range.distance;
    for (const PairRange& range : kPairs)
        if (letter >= range.first && letter <= range.last)
            return letter + ((letter - range.first) % 2 == 0 ? 1 : 0);
    return letter;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// The digits at the start of a text without leading zeros; `rest` is what follows them.
std::string_view TakeNumber(std::string_view text, std::string_view& rest) {
    const std::size_t end =
        static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
    rest = text.substr(end);
    const std::string_view digits = text.substr(0, end);
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

int Sign(bool less) {
    return less ? -1 : 1;
}

}  // namespace

CodePoint FirstCodePoint(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t bytes = AnnouncedBytes(first);
    if (bytes == 1) return {first, 1};
    if (bytes == 0 || bytes > text.size()) return {};
    char32_t value = first & (0x7Fu >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if (!IsContinuation(text[i])) return {};
        value = (value << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    return IsScalarOfLength(value, bytes) ? CodePoint{value, bytes} : CodePoint{};
}

void AppendCodePoint(std::string& text, char32_t value) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (value < 0x80) return append(value);
    if (value < 0x800) {
        append(0xC0 | (value >> 6));
    } else {
        if (value < 0x10000) {
            append(0xE0 | (value >> 12));
        } else {
            append(0xF0 | (value >> 18));
            append(0x80 | ((value >> 12) & 0x3F));
        }
        append(0x80 | ((value >> 6) & 0x3F));
    }
    append(0x80 | (value & 0x3F));
}

std::string FoldCase(std::string_view text) {
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const CodePoint point = FirstCodePoint(text);
        const char32_t small = point.value == CodePoint::kInvalid ? 0 : SmallLetter(point.value);
        if (point.value == CodePoint::kInvalid || small == point.value)
            folded.append(text, 0, point.bytes);
        else
            AppendCodePoint(folded, small);
        text.remove_prefix(point.bytes);
    }
    return folded;
}

std::string_view CutToBytes(std::string_view text, std::size_t mostBytes) {
    if (text.size() <= mostBytes) return text;
    std::size_t end = mostBytes;
    while (end > 0 && mostBytes - end < 4 && IsContinuation(text[end])) --end;
    return text.substr(0, IsContinuation(text[end]) ? mostBytes : end);
}

int CompareNaturally(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a[0]) && IsDigit(b[0])) {
            const std::string_view left = TakeNumber(a, a);
            const std::string_view right = TakeNumber(b, b);
            if (left.size() != right.size()) return Sign(left.size() < right.size());
            if (const int order = left.compare(right)) return order;
            continue;
        }
        if (a[0] != b[0])
            return Sign(static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]));
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    if (a.empty() && b.empty()) return 0;
    return Sign(a.empty());
}

}  // namespace sonavel
