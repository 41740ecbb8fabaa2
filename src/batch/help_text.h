// What --help prints, made from the command table, and the parts that it is made of.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "batch/command_row.h"

namespace sonavel::batch {

// The ways to call the tool, without a line break at the end.
std::string UsageText();
// The options and the grammar of a script; what the exit status says.
std::string GrammarText();
std::string ExitStatusText();

struct HelpGroup {
    const char* title;
    std::vector<CommandRow> (*rows)();
};
std::span<const HelpGroup> HelpGroups();

std::string HelpText();

}  // namespace sonavel::batch
