#include "document/step_words.h"

#include <charconv>
#include <cstdio>
#include <cstring>

#include "platform/code_page_949.h"

namespace sonavel {

std::uint64_t MarkOf(std::span<const std::uint8_t> bytes) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    constexpr std::size_t kLanes = 4;  // which do not wait for each other
    std::uint64_t lanes[kLanes] = {1, 2, 3, 4};
    const auto mix = [](std::uint64_t lane, std::uint64_t word) {
        const std::uint64_t product = (lane ^ word) * kFactor;
        return product ^ (product >> 29);
    };
    std::size_t at = 0;
    for (; bytes.size() - at >= kLanes * sizeof(std::uint64_t); at += sizeof lanes) {
        std::uint64_t words[kLanes];
        std::memcpy(words, bytes.data() + at, sizeof words);
        for (std::size_t i = 0; i < kLanes; ++i) lanes[i] = mix(lanes[i], words[i]);
    }
    std::uint64_t mark = bytes.size();
    for (const std::uint64_t lane : lanes) mark = mix(mark, lane);
    for (; at < bytes.size(); ++at) mark = mix(mark, bytes[at]);
    return mark == 0 ? 1 : mark;
}

std::vector<std::string> PlaceLines(std::uint32_t start, std::uint32_t end,
                                    std::optional<std::uint32_t> cursor) {
    if (start != end) return {"select " + std::to_string(start) + ' ' + std::to_string(end)};
    std::vector<std::string> lines = {"select 0 0"};
    if (cursor) lines.push_back("cursor " + std::to_string(*cursor));
    return lines;
}

std::optional<std::string> QuotedWord(std::string_view text) {
    using std::string_view_literals::operator""sv;
    if (!IsValidUtf8(text) || text.find_first_of("\n\0"sv) != std::string_view::npos)
        return std::nullopt;
    std::string word = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') word += '\\';
        word += c;
    }
    return word + '"';
}

std::optional<std::string> NumberWord(double value, int decimals, Precision precision) {
    constexpr double kGreatest = 1e15;
    if (!(value > -kGreatest && value < kGreatest)) return std::nullopt;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    std::string word = text;
    if (word.find('.') != std::string::npos) {
        word.erase(word.find_last_not_of('0') + 1);
        if (word.ends_with('.')) word.pop_back();
    }
    double read = 0;
    std::from_chars(word.data(), word.data() + word.size(), read);
    const bool same = precision == Precision::kDouble
                          ? read == value
                          : static_cast<float>(read) == static_cast<float>(value);
    return same ? std::optional(word) : std::nullopt;
}

}  // namespace sonavel
