#include "script/placing_words.h"

#include "spatial/placing_words.h"

namespace sonavel::script {
namespace {

// Scene units: far beyond what can still be heard.
constexpr double kGreatestCoordinate = 1000000;
constexpr std::size_t kCoordinates = 3;
constexpr int kUnitDecimals = 3;

std::vector<SourcePosition> PointsFrom(const std::vector<Value>& words, std::size_t skipped) {
    std::vector<float> numbers;
    for (std::size_t i = skipped; i < words.size(); ++i)
        numbers.push_back(static_cast<float>(std::get<double>(words[i])));
    std::vector<SourcePosition> points;
    for (std::size_t i = 0; i + kCoordinates <= numbers.size(); i += kCoordinates)
        points.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    return points;
}

}  // namespace

std::vector<PositionalRule> Coordinates(const std::vector<std::string>& names) {
    const ValueRule rule =
        ValueRule::Decimal(-kGreatestCoordinate, kGreatestCoordinate, kCoordinateDecimals);
    std::vector<PositionalRule> rules;
    rules.reserve(names.size());
    for (const std::string& name : names) rules.push_back({name, rule});
    return rules;
}

std::vector<KeyRule> PlacingKeys(PlacingKind kind) {
    const KeyRule smooth = {"smooth", ValueRule::Switch(), "off"};
    if (kind == PlacingKind::kPoint) return {smooth};
    return {smooth,
            {"doppler", ValueRule::Switch(), "off"},
            {"metres-per-unit",
             ValueRule::Decimal(kLeastMetresPerUnit, kGreatestMetresPerUnit, kUnitDecimals), "1"},
            {"curve", ValueRule::OneOf({"straight", "spline"}), "straight"}};
}

Placing PlacingFrom(PlacingKind kind, const Arguments& words, std::size_t skipped) {
    Placing placing = {.kind = kind, .points = PointsFrom(words.Positional(), skipped)};
    if (words.Switch("smooth")) placing.smoothness = Smoothness::kSmooth;
    if (kind == PlacingKind::kPoint) return placing;
    if (words.Switch("doppler")) placing.doppler = Doppler::kOn;
    if (words.Text("curve") == "spline") placing.curve = PathCurve::kSpline;
    placing.metresPerUnit = words.Decimal("metres-per-unit");
    return placing;
}

}  // namespace sonavel::script
