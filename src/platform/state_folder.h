// Where the program keeps what must outlive it without being a file of the person's.
#pragma once

#include <filesystem>

namespace sonavel {

// $XDG_STATE_HOME or ~/.local/state, "sonavel"; nothing is made.
std::filesystem::path StateFolder();

}  // namespace sonavel
