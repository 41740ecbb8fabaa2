#include "script/value_rule.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <limits>

#include "sound/time_text.h"

namespace sonavel::script {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsAllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::string_view WithoutSign(std::string_view text) {
    return text.starts_with('-') ? text.substr(1) : text;
}

// Numbers too large for the type become its limits.
std::optional<std::int64_t> ParseWhole(std::string_view text) {
    if (!IsAllDigits(WithoutSign(text))) return std::nullopt;
    std::int64_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return text.starts_with('-') ? std::numeric_limits<std::int64_t>::min()
                                     : std::numeric_limits<std::int64_t>::max();
    return value;
}

bool IsInRange(const ValueRule& rule, double value) {
    return value >= rule.least && value <= rule.greatest;
}

std::optional<double> ParseDecimal(const ValueRule& rule, std::string_view text) {
    const std::string_view digits = WithoutSign(text);
    const std::size_t point = digits.find('.');
    if (!IsAllDigits(digits.substr(0, point))) return std::nullopt;
    if (point != std::string_view::npos) {
        const std::string_view decimals = digits.substr(point + 1);
        if (!IsAllDigits(decimals) || decimals.size() > static_cast<std::size_t>(rule.decimals))
            return std::nullopt;
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || !IsInRange(rule, value)) return std::nullopt;
    return value;
}

std::optional<Value> ParseList(const ValueRule& rule, std::string_view text) {
    std::vector<double> values;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        const auto value = ParseDecimal(rule, text.substr(start, end - start));
        if (!value) return std::nullopt;
        values.push_back(*value);
        start = end + 1;
    }
    if (values.size() != rule.count) return std::nullopt;
    return values;
}

std::optional<Value> ParseWord(const ValueRule& rule, std::string_view text) {
    if (std::find(rule.words.begin(), rule.words.end(), text) == rule.words.end())
        return std::nullopt;
    return std::string(text);
}

// A length or a place: nothing that is counted from somewhere else.
std::optional<Value> ParseTimeWord(std::string_view text) {
    constexpr std::uint32_t kAnyRate = 48000;
    const auto time = ParseTime(text, kAnyRate, BareNumber::kFrames);
    if (!time || time->from != TimeFrom::kStart) return std::nullopt;
    return std::string(text);
}

std::string Number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string Range(const ValueRule& rule) {
    return " from " + Number(rule.least, rule.decimals) + " to " +
           Number(rule.greatest, rule.decimals);
}

std::string Alternatives(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) text += i + 1 == words.size() ? " or " : ", ";
        text += words[i];
    }
    return text;
}

std::string Decimals(const ValueRule& rule) {
    return rule.decimals == 1 ? " with at most one decimal"
                              : " with at most " + std::to_string(rule.decimals) + " decimals";
}

}  // namespace

ValueRule ValueRule::OneOf(std::vector<std::string> words) {
    return {.kind = Kind::kWord, .words = std::move(words)};
}

ValueRule ValueRule::Whole(std::int64_t least, std::int64_t greatest) {
    return {.kind = Kind::kWhole,
            .least = static_cast<double>(least),
            .greatest = static_cast<double>(greatest)};
}

ValueRule ValueRule::Decimal(double least, double greatest, int decimals) {
    return {.kind = Kind::kDecimal, .least = least, .greatest = greatest, .decimals = decimals};
}

ValueRule ValueRule::DecimalList(std::size_t count, double least, double greatest, int decimals) {
    return {.kind = Kind::kDecimalList,
            .least = least,
            .greatest = greatest,
            .decimals = decimals,
            .count = count};
}

std::optional<Value> ParseValue(const ValueRule& rule, std::string_view text) {
    switch (rule.kind) {
        case ValueRule::Kind::kText:
        case ValueRule::Kind::kPath:
            return std::string(text);
        case ValueRule::Kind::kWord:
            return ParseWord(rule, text);
        case ValueRule::Kind::kSwitch:
            if (text != "on" && text != "off") return std::nullopt;
            return text == "on";
        case ValueRule::Kind::kPosition:
            return ParseWhole(text);
        case ValueRule::Kind::kTime:
            return ParseTimeWord(text);
        case ValueRule::Kind::kWhole:
            if (const auto value = ParseWhole(text);
                value && IsInRange(rule, static_cast<double>(*value)))
                return *value;
            return std::nullopt;
        case ValueRule::Kind::kDecimal:
            return ParseDecimal(rule, text);
        case ValueRule::Kind::kDecimalList:
            return ParseList(rule, text);
    }
    return std::nullopt;
}

std::uint32_t FramesOfTime(std::string_view text, std::uint32_t samplesPerSecond) {
    constexpr std::int64_t kMost = std::numeric_limits<std::uint32_t>::max();
    const auto time = ParseTime(text, samplesPerSecond, BareNumber::kFrames);
    return time ? static_cast<std::uint32_t>(std::clamp<std::int64_t>(time->frames, 0, kMost)) : 0;
}

std::string DescribeRule(const ValueRule& rule) {
    switch (rule.kind) {
        case ValueRule::Kind::kText:
        case ValueRule::Kind::kPath:
            return "text";
        case ValueRule::Kind::kWord:
            return Alternatives(rule.words);
        case ValueRule::Kind::kSwitch:
            return "on or off";
        case ValueRule::Kind::kPosition:
            return "a whole number";
        case ValueRule::Kind::kTime:
            return "frames, or a time such as 250ms, 1.5s or 1:02:03.5";
        case ValueRule::Kind::kWhole:
            return "a whole number" + Range(rule);
        case ValueRule::Kind::kDecimal:
            return "a number" + Range(rule) + Decimals(rule);
        case ValueRule::Kind::kDecimalList:
            return std::to_string(rule.count) + " numbers" + Range(rule) + Decimals(rule) +
                   ", separated by commas";
    }
    return {};
}

}  // namespace sonavel::script
