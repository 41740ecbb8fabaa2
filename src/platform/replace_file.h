// Small files that are rewritten whole, so that a crash or a full disk never costs the old content.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sonavel {

// The bytes of a regular file; nothing when there is none, it cannot be read, or it holds more than
// `mostBytes` or the memory.
std::optional<std::string> ReadSmallFile(const std::filesystem::path& path, std::size_t mostBytes);

// Writes the bytes to a temporary file beside the target, flushes it to the disk and renames it
// over the target. A symbolic link is followed to its file; an existing file's permissions are
// kept. On failure the target is unchanged and the temporary file gone.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace sonavel
