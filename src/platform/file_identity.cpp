#include "platform/file_identity.h"

#include <sys/stat.h>

namespace sonavel {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

std::optional<FileIdentity> IdentityFrom(const struct stat& status) {
    if (!S_ISREG(status.st_mode) || status.st_size < 0) return std::nullopt;
    return FileIdentity{static_cast<std::uint64_t>(status.st_size),
                        status.st_mtim.tv_sec * kNanosecondsPerSecond + status.st_mtim.tv_nsec,
                        status.st_ino, status.st_dev};
}

}  // namespace

std::optional<FileIdentity> IdentityOfFile(const std::filesystem::path& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return IdentityFrom(status);
}

std::optional<FileIdentity> IdentityOfFile(int descriptor) {
    struct stat status;
    if (fstat(descriptor, &status) != 0) return std::nullopt;
    return IdentityFrom(status);
}

}  // namespace sonavel
