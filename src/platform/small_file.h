// Small files that are read and written whole.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sonavel {

// The bytes of a regular file; nothing when there is none, it cannot be read, or it holds more than
// `mostBytes` or the memory.
std::optional<std::string> ReadSmallFile(const std::filesystem::path& path, std::size_t mostBytes);

// Makes the bytes the file's whole content, as ReplacingFile does. On failure the file is
// unchanged.
bool ReplaceFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace sonavel
