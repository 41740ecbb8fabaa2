// What --help prints, made from the command table of scripts, and the parts of it.
#pragma once

#include <string>

namespace sonavel::batch {

// The ways to call the tool, without a line break at the end.
std::string UsageText();
// The options and the grammar of a script; what the exit status says.
std::string GrammarText();
std::string ExitStatusText();

std::string HelpText();

}  // namespace sonavel::batch
