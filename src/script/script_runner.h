// Runs the commands of a script in a session.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "script/script_parser.h"
#include "script/script_session.h"

namespace sonavel::script {

// Who waits for a script to end.
class ScriptWatcher {
  public:
    virtual ~ScriptWatcher() = default;

    // Before the first command, with 0 of them done, and behind each. kNo ends the script.
    virtual GoOn Watch(std::size_t, std::size_t) { return GoOn::kYes; }
};

struct ScriptEnd {
    enum class Kind : std::uint8_t { kSucceeded, kCommandFailed, kCancelled };

    Kind kind = Kind::kSucceeded;
    // Of the command that failed: where it stands, its name, and why on one line.
    int line = 0;
    std::string command = {};
    std::string reason = {};
};

// Stops at the first command that fails without a `try` before it. The script has no mistakes.
ScriptEnd RunCommands(const ParsedScript& script, ScriptSession& session, ScriptWatcher& watcher);

}  // namespace sonavel::script
