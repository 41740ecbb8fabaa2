#include "platform/command_search.h"

#include <algorithm>

namespace sonavel {
namespace {

char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool StartsWord(std::string_view name, std::size_t at) {
    return at == 0 || !IsLetter(Small(name[at - 1]));
}

constexpr int kInsideWord = 3;
constexpr int kGap = 1;
constexpr std::size_t kMostLetters = 64;

// The least cost of the letters from `typed` on, the first of them at `from` or behind.
std::optional<int> BestFit(std::string_view typed, std::string_view name, std::size_t from,
                           bool follows) {
    if (typed.empty()) return 0;
    std::optional<int> best;
    for (std::size_t at = from; at < name.size(); ++at) {
        if (Small(name[at]) != typed.front()) continue;
        const bool sideBySide = follows && at == from;
        const bool good = sideBySide || StartsWord(name, at);
        // Letters inside a word count as a run alone, which keeps the search short.
        const std::size_t run = follows ? at - from : at;
        const int cost = (good ? 0 : kInsideWord) + (sideBySide || at == 0 ? 0 : kGap) +
                         static_cast<int>(std::min<std::size_t>(run, kMostLetters)) / 8;
        const auto rest = BestFit(typed.substr(1), name, at + 1, true);
        if (rest && (!best || cost + *rest < *best)) best = cost + *rest;
        if (best == 0) break;
    }
    return best;
}

}  // namespace

std::optional<int> CommandFit(std::string_view typed, std::string_view name) {
    char letters[kMostLetters];
    std::size_t count = 0;
    for (const char c : typed)
        if (c != ' ' && count < kMostLetters) letters[count++] = Small(c);
    constexpr std::size_t kMostSearched =
        8;  // more letters are few enough to be looked for in turn
    const std::string_view wanted(letters, count);
    if (count <= kMostSearched) return BestFit(wanted, name.substr(0, kMostLetters), 0, false);
    std::size_t at = 0;
    for (const char c : wanted) {
        while (at < name.size() && Small(name[at]) != c) ++at;
        if (at++ >= name.size()) return std::nullopt;
    }
    return kInsideWord;
}

}  // namespace sonavel
