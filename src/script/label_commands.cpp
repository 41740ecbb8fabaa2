// The commands that find pauses, and those that read and write markers as texts.
#include "view/commands/label_commands.h"
#include "script/command_rows.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

constexpr double kLowestThreshold = -150;

Outcome Mark(ScriptSession& session, const Arguments& words) {
    const std::uint32_t rate = session.Document().Sound().GetSamplesPerSecond();
    const PauseRule rule{.threshold = words.Decimal("threshold"),
                         .leastPause = FramesOfTime(words.Text("pause"), rate),
                         .leastSound = FramesOfTime(words.Text("sound"), rate)};
    return MarkPauses(
        session.View(), rule,
        words.Text("as") == "regions" ? PauseMarks::kRegionsOfSound : PauseMarks::kMarkersAtPauses);
}

Outcome Write(ScriptSession& session, const Arguments& words) {
    return ExportMarkers(session.View(), session.PathOf(words.Text("PATH")));
}

Outcome Read(ScriptSession& session, const Arguments& words) {
    return ImportMarkers(session.View(), session.PathOf(words.Text("PATH")));
}

}  // namespace

std::vector<CommandRow> LabelCommandRows() {
    const PositionalRule path = {"PATH", ValueRule::Path()};
    return {
        {.name = "mark-pauses",
         .does = "Set markers at pauses, or regions of the sound between them",
         .keys = {{"threshold", ValueRule::Decimal(kLowestThreshold, 0, 1), "-40"},
                  {"pause", ValueRule::Time(), "500ms"},
                  {"sound", ValueRule::Time(), "200ms"},
                  {"as", ValueRule::OneOf({"markers", "regions"}), "markers"}},
         .run = Mark},
        {.name = "markers-export",
         .does = "Write the markers as a .txt, .csv, .vtt or .cue file",
         .positional = {path},
         .run = Write},
        {.name = "markers-import",
         .does = "Add the markers of a .txt, .csv, .vtt or .cue file",
         .positional = {path},
         .run = Read},
    };
}

}  // namespace sonavel::script
