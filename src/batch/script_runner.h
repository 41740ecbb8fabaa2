// Runs a script in a session.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "batch/batch_session.h"

namespace sonavel::batch {

enum ExitStatus : int { kSucceeded = 0, kCommandFailed = 1, kGrammarMistake = 2 };

// `name` stands for the script in messages, which go to `errors`. Stops at the first command that
// fails without a `try` before it; nothing is run when the grammar of any line is wrong.
ExitStatus RunScript(std::string_view name, std::string_view text, BatchSession& session,
                     std::ostream& errors);

}  // namespace sonavel::batch
