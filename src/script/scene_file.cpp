#include "script/scene_file.h"

#include "script/placing_words.h"
#include "script/report_text.h"
#include "script/script_parser.h"

namespace sonavel::script {
namespace {

constexpr double kLeastGain = -120;
constexpr double kGreatestGain = 40;
constexpr int kGainDecimals = 2;
constexpr std::size_t kCoordinates = 3;
constexpr std::size_t kBeforeCoordinates = 2;
constexpr int kWrittenDecimals = 6;
constexpr int kUnitDecimals = 3;

CommandRow SoundRow() {
    std::vector<PositionalRule> words = {{"PATH", ValueRule::Path()},
                                         {"KIND", ValueRule::OneOf({"point", "path"})}};
    for (PositionalRule& rule : Coordinates({"X", "Y", "Z"})) words.push_back(std::move(rule));
    std::vector<KeyRule> keys = PlacingKeys(PlacingKind::kPath);
    keys.push_back({"start", ValueRule::Time(), "0"});
    keys.push_back({"gain", ValueRule::Decimal(kLeastGain, kGreatestGain, kGainDecimals), "0"});
    return {.name = "sound",
            .does = "Place a sound in the scene",
            .positional = std::move(words),
            .repeated = kCoordinates,
            .keys = std::move(keys)};
}

Result<SceneLine> LineFrom(const ParsedCommand& command) {
    const Arguments& words = command.arguments;
    const bool isPath = words.Text("KIND") == "path";
    SceneLine line;
    line.line = command.line;
    line.path = words.Text("PATH");
    line.placing =
        PlacingFrom(isPath ? PlacingKind::kPath : PlacingKind::kPoint, words, kBeforeCoordinates);
    line.start = words.Text("start");
    line.gain = words.Decimal("gain");
    if (isPath && line.placing.points.size() < 2) return Failed("expected two points of the path");
    if (!isPath && line.placing.points.size() > 1) return Failed("expected one point");
    if (Outcome checked = CheckPlacing(line.placing); !checked) return checked;
    return line;
}

Outcome FailedAt(int line, const std::string& why) {
    return Failed("Line " + std::to_string(line) + " of the scene: " + why);
}

// A word as the grammar reads it, whatever its bytes are.
std::string WordOf(std::string_view bytes) {
    std::string word = "\"";
    for (const char c : bytes) {
        if (c == '"' || c == '\\') word += '\\';
        word += c;
    }
    return word + '"';
}

// As few decimals as say the same.
std::string NumberText(double value, int decimals) {
    std::string text = FixedText(value, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string PlaceText(const Placing& placing) {
    std::string text = placing.kind == PlacingKind::kPath ? " path" : " point";
    for (const SourcePosition& point : placing.points)
        for (const float value : {point.x, point.y, point.z})
            text += ' ' + NumberText(static_cast<double>(value), kWrittenDecimals);
    return text;
}

std::string KeysText(const SceneLine& line) {
    const Placing& placing = line.placing;
    std::string text = " start=" + line.start + " gain=" + NumberText(line.gain, kGainDecimals);
    if (placing.smoothness == Smoothness::kSmooth) text += " smooth=on";
    if (placing.kind == PlacingKind::kPoint) return text;
    if (placing.curve == PathCurve::kSpline) text += " curve=spline";
    if (placing.doppler == Doppler::kOn)
        text += " doppler=on metres-per-unit=" + NumberText(placing.metresPerUnit, kUnitDecimals);
    return text;
}

}  // namespace

Result<std::vector<SceneLine>> ParseScene(std::string_view text) {
    const std::vector<CommandRow> rows = {SoundRow()};
    const ParsedScript script = ParseScript(text, rows);
    if (!script.mistakes.empty())
        return FailedAt(script.mistakes.front().line, script.mistakes.front().text);
    std::vector<SceneLine> lines;
    for (const ParsedCommand& command : script.commands) {
        Result<SceneLine> line = LineFrom(command);
        if (!line) return FailedAt(command.line, line.Reason());
        lines.push_back(*std::move(line));
    }
    if (lines.empty()) return Failed("The scene has no sounds.");
    return lines;
}

std::string SceneText(const std::vector<SceneLine>& lines) {
    std::string text;
    for (const SceneLine& line : lines)
        text += "sound " + WordOf(line.path) + PlaceText(line.placing) + KeysText(line) + '\n';
    return text;
}

}  // namespace sonavel::script
