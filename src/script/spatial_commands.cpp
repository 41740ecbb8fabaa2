// 3D sound as commands: the words are the coordinates of points.
#include "document/untitled_titles.h"
#include "script/command_rows.h"
#include "script/placing_words.h"
#include "script/script_session.h"
#include "spatial/spatializer.h"

namespace sonavel::script {
namespace {

constexpr std::size_t kCoordinates = 3;

Outcome Place(ScriptSession& session, const Placing& placing, SpatialOutcome outcome) {
    const Selection selection = session.View().State().GetSelection();
    const std::string_view title = placing.kind == PlacingKind::kPoint
                                       ? spatial_title::kUserPositional
                                       : spatial_title::kUserMoving;
    return SpatializePlaced({session.Document(), selection.start, selection.end, title, outcome},
                            placing, session.Ears());
}

void SetHandlers(CommandRow& row, PlacingKind kind) {
    row.keys = PlacingKeys(kind);
    row.run = [kind](ScriptSession& session, const Arguments& words) {
        return Place(session, PlacingFrom(kind, words), SpatialOutcome::kApply);
    };
    row.preview = [kind](ScriptSession& session, const Arguments& words) {
        Outcome outcome = Place(session, PlacingFrom(kind, words), SpatialOutcome::kPreview);
        if (outcome) session.Document().SetPreviewTitlePrefix(untitled_prefix::kUserSound);
        return outcome;
    };
}

}  // namespace

std::vector<CommandRow> SpatialCommandRows() {
    CommandRow positional = {
        .name = "positional",
        .does = "Place the sound at a point; x right, y ahead, z up; smooth: by blended responses",
        .positional = Coordinates({"X", "Y", "Z"})};
    SetHandlers(positional, PlacingKind::kPoint);
    CommandRow moving = {
        .name = "moving",
        .does =
            "Move the sound along the points; smooth: without steps; doppler, of a smooth "
            "one: with the pitch that its speed gives",
        .positional = Coordinates({"X0", "Y0", "Z0", "X1", "Y1", "Z1"}),
        .repeated = kCoordinates};
    SetHandlers(moving, PlacingKind::kPath);
    return {positional, moving};
}

}  // namespace sonavel::script
