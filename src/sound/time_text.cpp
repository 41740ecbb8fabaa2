#include "sound/time_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sonavel {
namespace {

constexpr double kMostFrames = 1099511627776.0;  // 2^40
constexpr int kMostFields = 3;                   // hours, minutes, seconds
constexpr std::string_view kMinusSign = "\xE2\x88\x92";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Takes a prefix or a suffix away, and tells whether it was there.
bool TakeFront(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}
bool TakeBack(std::string_view& text, std::string_view suffix) {
    if (!text.ends_with(suffix)) return false;
    text.remove_suffix(suffix.size());
    return true;
}

bool IsDigits(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

enum class Fraction { kNone, kAllowed };

std::optional<double> ParseNumber(std::string_view text, Fraction fraction) {
    const std::size_t point = std::min(text.find('.'), text.size());
    if (!IsDigits(text.substr(0, point))) return std::nullopt;
    if (point < text.size() && (fraction == Fraction::kNone || !IsDigits(text.substr(point + 1))))
        return std::nullopt;
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

// Fields between colons; all but the first stay below 60, and the last alone has decimals.
std::optional<double> ParseClock(std::string_view text) {
    constexpr double kBase = 60;
    double seconds = 0;
    for (int field = 0; field < kMostFields; ++field) {
        const std::size_t end = text.find(':');
        const bool last = end == std::string_view::npos;
        const auto value =
            ParseNumber(text.substr(0, end), last ? Fraction::kAllowed : Fraction::kNone);
        if (!value || (field > 0 && *value >= kBase)) return std::nullopt;
        seconds = seconds * kBase + *value;
        if (last) return seconds;
        text.remove_prefix(end + 1);
    }
    return std::nullopt;
}

std::optional<double> Scaled(std::optional<double> value, double factor) {
    return value ? std::optional(*value * factor) : std::nullopt;
}

std::optional<double> ParseUnsigned(std::string_view text, double rate, BareNumber bare) {
    if (text.find(':') != std::string_view::npos) {
        TakeBack(text, "s");
        return Scaled(ParseClock(text), rate);
    }
    const auto frames = [&] { return ParseNumber(Trimmed(text), Fraction::kNone); };
    const auto time = [&] { return ParseNumber(Trimmed(text), Fraction::kAllowed); };
    if (TakeBack(text, "#")) return frames();
    if (TakeBack(text, "ms")) return Scaled(time(), rate / 1000);
    if (TakeBack(text, "s")) return Scaled(time(), rate);
    return bare == BareNumber::kFrames ? frames() : Scaled(time(), rate);
}

}  // namespace

std::optional<TypedTime> ParseTime(std::string_view text, std::uint32_t samplesPerSecond,
                                   BareNumber bare) {
    text = Trimmed(text);
    const bool negative = TakeFront(text, "-") || TakeFront(text, kMinusSign);
    const bool relative = negative || TakeFront(text, "+");
    const auto frames = ParseUnsigned(text, samplesPerSecond, bare);
    if (!frames || *frames > kMostFrames) return std::nullopt;
    const std::int64_t whole = std::llround(*frames);
    return TypedTime{negative ? -whole : whole, relative ? TimeFrom::kHere : TimeFrom::kStart};
}

}  // namespace sonavel
