#include "platform/state_folder.h"

#include <cstdlib>

namespace sonavel {

std::filesystem::path StateFolder() {
    // A relative path counts as none.
    if (const char* state = std::getenv("XDG_STATE_HOME"); state && *state == '/')
        return std::filesystem::path(state) / "sonavel";
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home && *home ? home : "/") / ".local" / "state" / "sonavel";
}

}  // namespace sonavel
