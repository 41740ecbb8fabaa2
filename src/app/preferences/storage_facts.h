// What the program takes of memory and disk where the preferences leave it to it.
#pragma once

#include <cstdint>
#include <optional>

namespace sonavel {

// Bytes.
struct StorageFacts {
    std::uint64_t undoMemory = 0;
    // Of unsaved work; nothing where none is kept.
    struct Recovery {
        std::uint64_t room = 0;
        std::uint64_t held = 0;  // on the disk now
    };
    std::optional<Recovery> recovery = {};
};

}  // namespace sonavel
