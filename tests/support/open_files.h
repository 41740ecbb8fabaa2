// What this process holds open, so that a test sees a descriptor that is never closed.
#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace sonavel {

inline std::size_t OpenFileCount() {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

}  // namespace sonavel
