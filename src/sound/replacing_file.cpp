#include "sound/replacing_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kMostNames = 1000;
constexpr std::int64_t kSendBytes = std::int64_t{8} << 20;

// The last path of a chain of symbolic links, whether or not a file is there.
fs::path FollowLinks(fs::path path) {
    std::error_code error;
    for (int link = 0; link < kMostLinks && fs::is_symlink(path, error); ++link) {
        const fs::path next = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / next;
    }
    return path;
}

bool MayReplace(const fs::path& target) {
    struct stat status;
    if (stat(target.c_str(), &status) != 0) return errno == ENOENT;
    return S_ISREG(status.st_mode) && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
}

void FlushFolderOf(const fs::path& file) {
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    // Some file systems refuse this; the file itself is safe by then.
    fsync(descriptor);
    close(descriptor);
}

}  // namespace

ReplacingFile::~ReplacingFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

bool ReplacingFile::Open(const fs::path& target) {
    target_ = FollowLinks(target);
    if (!target_.has_filename() || !MayReplace(target_) || !CreateTemporary()) return false;
    KeepPermissionsOf(target_);
    return true;
}

bool ReplacingFile::CreateTemporary() {
    const std::string prefix = ".sonavel-" + std::to_string(getpid()) + "-";
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        const fs::path name = target_.parent_path() / (prefix + std::to_string(attempt) + ".tmp");
        // The permissions of any new file, as the person's mask and the folder shape them.
        descriptor_ = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ >= 0) temporary_ = name;
        if (descriptor_ >= 0 || errno != EEXIST) break;
    }
    return descriptor_ >= 0;
}

void ReplacingFile::KeepPermissionsOf(const fs::path& old) {
    struct stat status;
    if (stat(old.c_str(), &status) != 0) return;
    // Only the owner's own groups can be given; a refusal leaves the file with the person who
    // saves.
    [[maybe_unused]] const int owned = fchown(descriptor_, status.st_uid, status.st_gid);
    // After the owner, whose change takes special bits away.
    fchmod(descriptor_, status.st_mode & 07777);
}

bool ReplacingFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        writtenBytes_ += written;
    }
    StartSending();
    return true;
}

// Lets the disk work while the rest is being written, so that the flush at the end has little to
// wait for. Failures show in that flush.
void ReplacingFile::StartSending() {
    if (writtenBytes_ - sentBytes_ < kSendBytes) return;
    sync_file_range(descriptor_, sentBytes_, writtenBytes_ - sentBytes_, SYNC_FILE_RANGE_WRITE);
    sentBytes_ = writtenBytes_;
}

bool ReplacingFile::Commit() {
    if (fsync(descriptor_) != 0) return false;
    const bool closed = close(descriptor_) == 0;
    descriptor_ = -1;
    if (!closed || rename(temporary_.c_str(), target_.c_str()) != 0) return false;
    temporary_.clear();
    FlushFolderOf(target_);
    return true;
}

}  // namespace sonavel
