// The commands that steer the script itself, and the table of all commands.
#include "batch/batch_session.h"
#include "batch/command_rows.h"
#include "batch/help_text.h"

namespace sonavel::batch {
namespace {

Outcome Answer(BatchSession& session, const Arguments& words) {
    for (const Value& word : words.Positional())
        session.Prompts().QueueAnswer(PromptAnswerFromWord(std::get<std::string>(word)).value());
    return Done();
}

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

const std::vector<CommandRow>& AllCommandRows() {
    static const std::vector<CommandRow> kRows = [] {
        std::vector<CommandRow> rows;
        for (const HelpGroup& group : HelpGroups()) {
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

}  // namespace sonavel::batch
