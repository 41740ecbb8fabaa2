// Keeps programs that ask for it from rewriting files of one folder at the same time.
#pragma once

#include <chrono>
#include <filesystem>

#include "platform/file_descriptor.h"

namespace sonavel {

class FolderLock {
  public:
    static constexpr std::chrono::milliseconds kLongestWait{2000};

    // Waits until no other FolderLock of any program holds the folder, the empty path being the
    // working folder, and holds it until this ends.
    explicit FolderLock(const std::filesystem::path& folder,
                        std::chrono::milliseconds longestWait = kLongestWait);

    // False when another still held it at the end of the wait. True also where the folder cannot be
    // locked at all.
    bool IsHeld() const { return held_; }

  private:
    FileDescriptor folder_;
    bool held_ = false;
};

}  // namespace sonavel
