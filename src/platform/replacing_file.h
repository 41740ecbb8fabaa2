// A file that is written beside its target and takes the target's place only when it is complete
// and on the disk, so that a full disk or a crash never costs the old file. Everything that is
// saved, sounds as well as settings, is written so.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "platform/file_descriptor.h"

namespace sonavel {

class ReplacingFile {
  public:
    ReplacingFile() = default;
    // Without a Commit before it, removes what was written and leaves the target as it was.
    ~ReplacingFile();
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    // Creates the temporary file, which nobody else may read, in the folder of the target. That is
    // the file which `target` leads to when it is a symbolic link. False when the folder cannot be
    // written, or the target exists and may not be written or is no regular file.
    bool Open(const std::filesystem::path& target);
    // Where it is written until then, for a program that writes by path.
    const std::filesystem::path& TemporaryPath() const { return temporary_; }
    // False when the disk is full or fails.
    bool Write(std::span<const std::uint8_t> bytes);
    // Flushes to the disk and renames over the target, which keeps its owner, permissions, access
    // list and extended attributes. A target of several names (hard links) is rewritten in place
    // instead, from the complete temporary file. On failure the target is as it was; when the disk
    // fails in the midst of rewriting in place, the temporary file is left beside the target.
    bool Commit();
    // Brings what was written to the disk, which may take as long as the disk wants; Commit() has
    // little left to wait for then.
    bool Flush();

  private:
    bool TakePlaceOfTarget(const FileDescriptor& target);
    bool RewriteTarget(const FileDescriptor& target);
    void TakeAccessOf(const FileDescriptor& target);
    void StartSending();

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    FileDescriptor file_;
    std::int64_t writtenBytes_ = 0;
    std::int64_t sentBytes_ = 0;  // on their way to the disk
};

// The last path of a chain of symbolic links, whether or not a file is there.
std::filesystem::path FollowLinks(std::filesystem::path path);

}  // namespace sonavel
