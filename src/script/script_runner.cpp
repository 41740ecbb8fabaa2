#include "script/script_runner.h"

#include <new>
#include <ostream>

#include "platform/failure_texts.h"

namespace sonavel::script {
namespace {

Outcome RunCommand(const ParsedCommand& command, ScriptSession& session) try {
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

ScriptEnd RunCommands(const ParsedScript& script, ScriptSession& session, ScriptWatcher& watcher) {
    using enum ScriptEnd::Kind;
    const std::size_t count = script.commands.size();
    if (watcher.Watch(0, count) == GoOn::kNo) return {kCancelled};
    std::size_t done = 0;
    for (const ParsedCommand& command : script.commands) {
        const Outcome outcome = RunCommand(command, session);
        // Also a command whose failure is passed by may have ended because the script is to end.
        if (watcher.Watch(++done, count) == GoOn::kNo) return {kCancelled};
        if (outcome) continue;
        const std::string reason = OnOneLine(outcome.Reason());
        if (!command.tried) return {kCommandFailed, command.line, NameOf(command), reason};
        session.Out() << "failed: " << reason << '\n';
    }
    return {};
}

}  // namespace sonavel::script
