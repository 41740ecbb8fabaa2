// Which file a path led to at one moment, and whether it still is the same and unchanged.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace sonavel {

struct FileIdentity {
    std::uint64_t sizeBytes = 0;
    std::int64_t changedNs = 0;  // of the content, since 1970
    std::uint64_t inode = 0;
    std::uint64_t device = 0;

    bool operator==(const FileIdentity&) const = default;
};

// Of the file that the path leads to, through symbolic links; nothing when there is no regular file
// or it cannot be looked at.
std::optional<FileIdentity> IdentityOfFile(const std::filesystem::path& path);
// Of an open file.
std::optional<FileIdentity> IdentityOfFile(int descriptor);

}  // namespace sonavel
