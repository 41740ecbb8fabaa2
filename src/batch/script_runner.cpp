#include "batch/script_runner.h"

#include <new>
#include <ostream>

#include "batch/command_rows.h"
#include "batch/script_parser.h"
#include "platform/failure_texts.h"

namespace sonavel::batch {
namespace {

Outcome RunCommand(const ParsedCommand& command, BatchSession& session) try {
    if (command.row->needs == Needs::kDocument && !session.HasActive())
        return Failed("No document is open.");
    const Handler& handler = command.previewed ? command.row->preview : command.row->run;
    return handler(session, command.arguments);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

std::string NameOf(const ParsedCommand& command) {
    return command.previewed ? "preview" : command.row->name;
}

}  // namespace

ExitStatus RunScript(std::string_view name, std::string_view text, BatchSession& session,
                     std::ostream& errors) {
    const ParsedScript script = ParseScript(text, AllCommandRows());
    for (const GrammarMistake& mistake : script.mistakes)
        errors << name << ':' << mistake.line << ": " << mistake.text << '\n';
    if (!script.mistakes.empty()) return kGrammarMistake;
    for (const ParsedCommand& command : script.commands) {
        const Outcome outcome = RunCommand(command, session);
        if (outcome) continue;
        const std::string reason = OnOneLine(outcome.Reason());
        if (command.tried) {
            session.Out() << "failed: " << reason << '\n';
            continue;
        }
        session.Out() << std::flush;
        errors << name << ':' << command.line << ": " << NameOf(command) << ": failed: " << reason
               << '\n';
        return kCommandFailed;
    }
    session.Out() << std::flush;
    return kSucceeded;
}

}  // namespace sonavel::batch
