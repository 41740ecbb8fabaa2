// 3D sound as commands: the words are the coordinates of points.
#include "batch/batch_session.h"
#include "batch/command_rows.h"
#include "document/untitled_titles.h"
#include "spatial/spatializer.h"

namespace sonavel::batch {
namespace {

// Scene units: far beyond what can still be heard.
constexpr double kGreatestCoordinate = 1000000;
constexpr int kCoordinateDecimals = 6;
constexpr std::size_t kCoordinates = 3;

std::vector<SourcePosition> PointsFrom(const Arguments& words) {
    std::vector<float> numbers;
    for (const Value& word : words.Positional())
        numbers.push_back(static_cast<float>(std::get<double>(word)));
    std::vector<SourcePosition> points;
    for (std::size_t i = 0; i + kCoordinates <= numbers.size(); i += kCoordinates)
        points.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    return points;
}

SpatialTarget TargetOf(BatchSession& session, std::string_view title, SpatialOutcome outcome) {
    const Selection selection = session.View().State().GetSelection();
    return {session.Document(), selection.start, selection.end, title, outcome};
}

Outcome Positional(BatchSession& session, const Arguments& words, SpatialOutcome outcome) {
    const SpatialTarget target = TargetOf(session, spatial_title::kUserPositional, outcome);
    return SpatializePositional(target, PointsFrom(words).front());
}

Outcome Moving(BatchSession& session, const Arguments& words, SpatialOutcome outcome) {
    const SpatialTarget target = TargetOf(session, spatial_title::kUserMoving, outcome);
    return SpatializeMoving(target, PointsFrom(words));
}

using Run = Outcome (*)(BatchSession&, const Arguments&, SpatialOutcome);

void SetHandlers(CommandRow& row, Run run) {
    row.run = [run](BatchSession& session, const Arguments& words) {
        return run(session, words, SpatialOutcome::kApply);
    };
    row.preview = [run](BatchSession& session, const Arguments& words) {
        Outcome outcome = run(session, words, SpatialOutcome::kPreview);
        if (outcome) session.Document().SetPreviewTitlePrefix(untitled_prefix::kUserSound);
        return outcome;
    };
}

std::vector<PositionalRule> Coordinates(const std::vector<std::string>& names) {
    const ValueRule rule =
        ValueRule::Decimal(-kGreatestCoordinate, kGreatestCoordinate, kCoordinateDecimals);
    std::vector<PositionalRule> rules;
    rules.reserve(names.size());
    for (const std::string& name : names) rules.push_back({name, rule});
    return rules;
}

}  // namespace

std::vector<CommandRow> SpatialCommandRows() {
    CommandRow positional = {.name = "positional",
                             .does = "Place the sound at a point; x right, y ahead, z up",
                             .positional = Coordinates({"X", "Y", "Z"})};
    SetHandlers(positional, Positional);
    CommandRow moving = {.name = "moving",
                         .does = "Move the sound along the points",
                         .positional = Coordinates({"X0", "Y0", "Z0", "X1", "Y1", "Z1"}),
                         .repeated = kCoordinates};
    SetHandlers(moving, Moving);
    return {positional, moving};
}

}  // namespace sonavel::batch
