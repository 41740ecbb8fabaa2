#include "exchange/label_readers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "exchange/foreign_text.h"
#include "exchange/sound_extras.h"

namespace sonavel {

std::optional<std::string_view> LabelLines::Next() {
    if (rest_.empty()) return std::nullopt;
    const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end);
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : rest_.empty() ? 0 : 1);
    ++number_;
    return line;
}

Outcome BadLine(std::size_t number, std::string_view expected) {
    return Failed("Line " + std::to_string(number) + ": expected " + std::string(expected) + ".");
}

bool LabelTaker::Take(double start, double end, const std::string& name) {
    const bool inRange = start >= 0 && start <= end && end <= kMostLabelSeconds;
    if (!inRange || labels_.size() >= kMostMarkers) return false;
    const auto frame = [this](double seconds) {
        return static_cast<std::uint64_t>(std::llround(seconds * rate_));
    };
    const std::uint64_t first = frame(start);
    labels_.push_back({first, frame(end) - first,
                       std::string(Utf8Beginning(Utf8FromUnknown(name), kMostMarkerNameBytes))});
    return true;
}

std::vector<SoundChapter> LabelTaker::Labels() {
    std::ranges::stable_sort(labels_, {}, &SoundChapter::startFrame);
    return std::move(labels_);
}

std::optional<double> LabelSeconds(std::string_view text) {
    std::string number(WithoutBlanks(text));
    std::ranges::replace(number, ',', '.');
    const bool plain =
        !number.empty() && number.find_first_not_of("0123456789.") == std::string_view::npos;
    double seconds = 0;
    const char* end = number.data() + number.size();
    const auto [rest, error] = std::from_chars(number.data(), end, seconds);
    if (!plain || error != std::errc() || rest != end || seconds > kMostLabelSeconds)
        return std::nullopt;
    return seconds;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace sonavel
