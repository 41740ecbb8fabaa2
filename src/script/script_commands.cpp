// The commands that steer the script itself, and the table of all commands.
#include "script/command_rows.h"
#include "script/script_session.h"

namespace sonavel::script {
namespace {

Outcome Answer(ScriptSession& session, const Arguments& words) {
    for (const Value& word : words.Positional())
        session.Prompts().QueueAnswer(PromptAnswerFromWord(std::get<std::string>(word)).value());
    return Done();
}

constexpr CommandGroup kGroups[] = {
    {"Documents", DocumentCommandRows},
    {"Import and tags", ImportCommandRows},
    {"Export", ExportCommandRows},
    {"Pauses and labels", LabelCommandRows},
    {"Reports", ReportCommandRows},
    {"Selection, clipboard, markers", EditCommandRows},
    {"Format of the sound", FormatCommandRows},
    {"View and menu commands", ViewCommandRows},
    {"Spectrogram", SpectrogramCommandRows},
    {"Effects, on the selection or on the whole sound without one", EffectCommandRows},
    {"Space", SpaceCommandRows},
    {"Recovery", RecoveryCommandRows},
    {"Script", ScriptCommandRows},
};

}  // namespace

std::vector<CommandRow> ScriptCommandRows() {
    const ValueRule answer =
        ValueRule::OneOf({"ok", "cancel", "yes", "no", "left", "right", "both", "mix"});
    return {
        {.name = "answer",
         .does = "Queue answers to the questions to come",
         .positional = {{"WORD", answer}},
         .repeated = 1,
         .needs = Needs::kNothing,
         .run = Answer},
        {.name = "try",
         .does = "Run a command and go on when it fails",
         .needs = Needs::kNothing,
         .prefix = Prefix::kTry},
    };
}

std::span<const CommandGroup> CommandGroups() {
    return kGroups;
}

const std::vector<CommandRow>& AllCommandRows() {
    static const std::vector<CommandRow> kRows = [] {
        std::vector<CommandRow> rows;
        for (const CommandGroup& group : CommandGroups()) {
            const std::vector<CommandRow> some = group.rows();
            rows.insert(rows.end(), some.begin(), some.end());
        }
        return rows;
    }();
    return kRows;
}

const CommandRow* FindCommandRow(const std::vector<CommandRow>& rows, std::string_view name) {
    for (const CommandRow& row : rows)
        if (row.name == name) return &row;
    return nullptr;
}

}  // namespace sonavel::script
