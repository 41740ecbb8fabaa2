#include "spatial/placing_words.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr int kUnitDecimals = 3;
constexpr int kAngleDecimals = 1;
constexpr std::size_t kLeastPathPoints = 2;

std::optional<std::string> Coordinates(const std::vector<SourcePosition>& points) {
    std::string text;
    for (const SourcePosition& point : points)
        for (const float value : {point.x, point.y, point.z}) {
            const auto word = NumberWord(value, kCoordinateDecimals, Precision::kSingle);
            if (!word) return std::nullopt;
            text += ' ' + *word;
        }
    return text;
}

// What a script has no keys for.
bool HasMore(const Placing& placing) {
    return placing.loop != PathLoop::kOnce || placing.roundSeconds != 0 ||
           std::ranges::any_of(placing.times, [](const auto& time) { return time.has_value(); }) ||
           placing.law != DistanceLaw{};
}

std::optional<std::string> PathKeys(const Placing& placing) {
    std::string keys;
    if (placing.curve == PathCurve::kSpline) keys += " curve=spline";
    if (placing.smoothness == Smoothness::kStepped || placing.doppler == Doppler::kOff) return keys;
    const auto unit = NumberWord(placing.metresPerUnit, kUnitDecimals);
    if (!unit) return std::nullopt;
    return keys + " doppler=on metres-per-unit=" + *unit;
}

}  // namespace

StepWords WordsOf(const SpatialTarget& target, const Placing& placing, const Listener& listener) {
    const bool isPath = placing.kind == PlacingKind::kPath;
    const bool isSmooth = placing.smoothness == Smoothness::kSmooth;
    const auto points = Coordinates(placing.points);
    const auto keys = isPath ? PathKeys(placing) : std::string();
    if (!points || !keys || HasMore(placing) || (isSmooth && !listener.UsesTable())) return {};
    if (isPath && placing.points.size() < kLeastPathPoints) return {};
    StepWords words{.lines = PlaceLines(target.selectionStart, target.selectionEnd)};
    words.lines.push_back((isPath ? "moving" : "positional") + *points + *keys +
                          (isSmooth ? " smooth=on" : ""));
    return words;
}

StepWords WordsOfCrosstalk(std::uint32_t selectionStart, std::uint32_t selectionEnd, double angle,
                           const Listener& listener) {
    const auto word = NumberWord(angle, kAngleDecimals);
    if (!word || !listener.UsesTable()) return {};
    StepWords words{.lines = PlaceLines(selectionStart, selectionEnd)};
    words.lines.push_back("crosstalk angle=" + *word);
    return words;
}

}  // namespace sonavel
