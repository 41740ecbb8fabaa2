// A file that is written beside its target and takes the target's place only when it is complete
// and on the disk, so that a full disk or a crash never costs the old file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace sonavel {

class ReplacingFile {
  public:
    ReplacingFile() = default;
    // Without a Commit before it, removes what was written and leaves the target as it was.
    ~ReplacingFile();
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    // Creates the temporary file in the folder of the target, which is the file that `target` leads
    // to when it is a symbolic link. False when the folder cannot be written, or the target exists
    // and may not be written or is no regular file.
    bool Open(const std::filesystem::path& target);
    // False when the disk is full or fails.
    bool Write(std::span<const std::uint8_t> bytes);
    // Flushes to the disk and renames over the target, which keeps its permissions. On failure the
    // target is as it was.
    bool Commit();

  private:
    bool CreateTemporary();
    void StartSending();
    void KeepPermissionsOf(const std::filesystem::path& old);

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    int descriptor_ = -1;
    std::int64_t writtenBytes_ = 0;
    std::int64_t sentBytes_ = 0;  // on their way to the disk
};

}  // namespace sonavel
