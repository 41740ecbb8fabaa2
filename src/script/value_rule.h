// What the values of a command's words may be.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace sonavel::script {

// Text, a whole number, a number with decimals, a switch, or a list of numbers.
using Value = std::variant<std::string, std::int64_t, double, bool, std::vector<double>>;

struct ValueRule {
    enum class Kind {
        kText,
        kPath,
        kWord,
        kWhole,
        kPosition,
        kTime,
        kDecimal,
        kSwitch,
        kDecimalList
    };

    Kind kind = Kind::kText;
    double least = 0;
    double greatest = 0;
    int decimals = 0;                  // the most that may be written
    std::size_t count = 0;             // of a list
    std::vector<std::string> words{};  // of kWord

    static ValueRule Text() { return {}; }
    // Bytes as they are: names of files need not be UTF-8.
    static ValueRule Path() { return {.kind = Kind::kPath}; }
    static ValueRule OneOf(std::vector<std::string> words);
    static ValueRule Whole(std::int64_t least, std::int64_t greatest);
    // A whole number of any size, which the command clamps.
    static ValueRule Position() { return {.kind = Kind::kPosition}; }
    // Frames, or a time with its unit; kept as text, since only the sound's rate says how many
    // frames it is (FramesOfTime).
    static ValueRule Time() { return {.kind = Kind::kTime}; }
    static ValueRule Decimal(double least, double greatest, int decimals);
    static ValueRule Switch() { return {.kind = Kind::kSwitch}; }
    static ValueRule DecimalList(std::size_t count, double least, double greatest, int decimals);
};

// Nothing when the text breaks the rule.
std::optional<Value> ParseValue(const ValueRule& rule, std::string_view text);

// Of a word that a rule for times let pass; 0 for less.
std::uint32_t FramesOfTime(std::string_view text, std::uint32_t samplesPerSecond);

// "a whole number from 1 to 1000", for the sentence that names what was expected.
std::string DescribeRule(const ValueRule& rule);

}  // namespace sonavel::script
