#include "platform/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <new>
#include <system_error>

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFileMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;

// The file that a chain of symbolic links ends at, existing or not; the path itself when it is
// none.
fs::path FollowLinks(const fs::path& path) {
    constexpr int kMostLinks = 40;
    fs::path target = path;
    std::error_code error;
    for (int i = 0; i < kMostLinks && fs::is_symlink(target, error); ++i) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) return path;
        target = target.parent_path() / next;
    }
    return target;
}

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

mode_t ModeFor(const fs::path& target) {
    struct stat old;
    if (stat(target.c_str(), &old) == 0) return old.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return kNewFileMode & ~mask;
}

}  // namespace

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
    const fs::path target = FollowLinks(path);
    std::error_code error;
    if (fs::exists(target, error) && access(target.c_str(), W_OK) != 0) return false;
    std::string temporary = target.string() + ".XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0) return false;
    bool good = WriteAll(file, bytes) && fchmod(file, ModeFor(target)) == 0 && fsync(file) == 0;
    good = close(file) == 0 && good;
    good = good && rename(temporary.c_str(), target.c_str()) == 0;
    if (!good) unlink(temporary.c_str());
    return good;
}

}  // namespace sonavel
