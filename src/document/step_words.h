// How a script does one edit: what the front end that knows the command says of it before it runs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sonavel {

// What commands leave for later ones beside the sound.
enum class Supply : std::uint8_t { kClip, kNoise };

struct StepWords {
    std::vector<std::string> lines;  // commands; none where a script has no words for it
    // What it works with, which has to be as it was then.
    std::optional<Supply> takes = {};
};

// Tells one content from another; 0 stands for none.
std::uint64_t MarkOf(std::span<const std::uint8_t> bytes);

// "select 3 9", or for an empty range what takes the selection away; then the cursor, where one is
// given.
std::vector<std::string> PlaceLines(std::uint32_t start, std::uint32_t end,
                                    std::optional<std::uint32_t> cursor = std::nullopt);

// The text as one word; nothing for what a script cannot hold.
std::optional<std::string> QuotedWord(std::string_view text);

// The number as a script reads it, without needless zeros; nothing where so many decimals do not
// give it back. `asFloat`: as a number of single precision.
enum class Precision { kDouble, kSingle };
std::optional<std::string> NumberWord(double value, int decimals,
                                      Precision precision = Precision::kDouble);

}  // namespace sonavel
