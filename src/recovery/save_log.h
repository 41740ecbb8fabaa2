// Where a program has begun to save, so that what a killed save left beside its target can be
// removed at the next start.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/file_descriptor.h"

namespace sonavel::recovery {

// Both run on the journal's thread.

class SaveLog {
  public:
    explicit SaveLog(std::filesystem::path folder) : folder_(std::move(folder)) {}
    // The log of a program that ends by itself goes.
    ~SaveLog();
    SaveLog(const SaveLog&) = delete;
    SaveLog& operator=(const SaveLog&) = delete;

    // Before the save begins.
    void Note(const std::filesystem::path& target);

  private:
    std::filesystem::path folder_;
    std::filesystem::path path_;  // empty until the first note
    FileDescriptor file_;         // locked
};

// Of programs that are gone: removes the temporary files of their saves, which bear the program's
// number, are regular, of this user and of one name, and the logs themselves.
void RemoveLeftTemporaryFiles(const std::filesystem::path& folder);

}  // namespace sonavel::recovery
