#include "platform/small_file.h"

#include <cstdint>
#include <fstream>
#include <new>
#include <span>
#include <system_error>

#include "platform/replacing_file.h"

namespace sonavel {

namespace fs = std::filesystem;

std::optional<std::string> ReadSmallFile(const fs::path& path, std::size_t mostBytes) try {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error || size > mostBytes) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) return std::nullopt;
    return bytes;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

bool ReplaceFile(const fs::path& path, std::string_view bytes) {
    ReplacingFile file;
    const std::span content(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return file.Open(path) && file.Write(content) && file.Commit();
}

}  // namespace sonavel
