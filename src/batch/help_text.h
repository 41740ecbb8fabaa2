// What --help prints, made from the command table.
#pragma once

#include <string>

namespace sonavel::batch {

// The ways to call the tool, without a line break at the end.
std::string UsageText();
std::string HelpText();

}  // namespace sonavel::batch
