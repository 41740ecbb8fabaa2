#include "platform/replacing_file.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/file_access.h"

namespace sonavel {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kMostNames = 1000;
constexpr std::int64_t kSendBytes = std::int64_t{8} << 20;

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// A new file under a name of its own in that folder; not open when none can be made there.
FileDescriptor CreateIn(const fs::path& folder, mode_t mode, fs::path& path) {
    const std::string prefix = ".sonavel-" + std::to_string(getpid()) + "-";
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        path = folder / (prefix + std::to_string(attempt) + ".tmp");
        FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.IsOpen() || errno != EEXIST) return file;
    }
    return {};
}

// A file that is there, to be written. Nothing when it may not be written or is no regular file;
// not open when there is none.
std::optional<FileDescriptor> OpenTarget(const fs::path& target) {
    struct stat status;
    if (stat(target.c_str(), &status) != 0)
        return errno == ENOENT ? std::optional(FileDescriptor()) : std::nullopt;
    // Merely opening a device may set it off.
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    FileDescriptor file(open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    const bool regular =
        file.IsOpen() && fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode);
    return regular ? std::optional(std::move(file)) : std::nullopt;
}

bool HasOtherNames(const FileDescriptor& file) {
    struct stat status;
    return file.IsOpen() && fstat(file.Get(), &status) == 0 && status.st_nlink > 1;
}

std::int64_t SizeOf(const FileDescriptor& file) {
    struct stat status;
    return fstat(file.Get(), &status) == 0 ? status.st_size : -1;
}

void FlushFolderOf(const fs::path& file) {
    const FileDescriptor folder(open(FolderOf(file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems refuse this; the file itself is safe by then.
    if (folder.IsOpen()) fsync(folder.Get());
}

// Has the disk's room before anything is overwritten, as far as the file system can promise it.
bool Reserve(const FileDescriptor& file, std::int64_t bytes) {
    const std::int64_t before = SizeOf(file);
    if (bytes == 0 || fallocate(file.Get(), 0, 0, bytes) == 0) return before >= 0;
    if (errno == EOPNOTSUPP || errno == ENOSYS) return before >= 0;
    [[maybe_unused]] const int undone = ftruncate(file.Get(), before);
    return false;
}

bool CopyBytes(const FileDescriptor& from, const FileDescriptor& to, std::int64_t bytes) {
    off_t done = 0;
    while (done < bytes) {
        const ssize_t sent =
            sendfile(to.Get(), from.Get(), &done, static_cast<std::size_t>(bytes - done));
        if (sent < 0 && errno == EINTR) continue;
        if (sent <= 0) return false;
    }
    return true;
}

}  // namespace

fs::path FollowLinks(fs::path path) {
    std::error_code error;
    for (int link = 0; link < kMostLinks && fs::is_symlink(path, error); ++link) {
        const fs::path next = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / next;
    }
    return path;
}

ReplacingFile::~ReplacingFile() {
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

bool ReplacingFile::Open(const fs::path& target) {
    target_ = FollowLinks(target);
    if (!target_.has_filename() || !OpenTarget(target_)) return false;
    fs::path name;
    file_ = CreateIn(FolderOf(target_), S_IRUSR | S_IWUSR, name);
    if (file_.IsOpen()) temporary_ = name;
    return file_.IsOpen();
}

bool ReplacingFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file_.Get(), bytes.data(), bytes.size());
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
    sync_file_range(file_.Get(), sentBytes_, writtenBytes_ - sentBytes_, SYNC_FILE_RANGE_WRITE);
    sentBytes_ = writtenBytes_;
}

bool ReplacingFile::Flush() {
    return fsync(file_.Get()) == 0;
}

bool ReplacingFile::Commit() {
    const std::optional<FileDescriptor> target = OpenTarget(target_);
    if (!target) return false;
    return HasOtherNames(*target) ? RewriteTarget(*target) : TakePlaceOfTarget(*target);
}

// A file that was not there before gets what any new file gets there, as the person's mask and the
// folder shape it. An empty file shows what that is.
void ReplacingFile::TakeAccessOf(const FileDescriptor& target) {
    if (target.IsOpen()) return CopyFileAccess(target.Get(), file_.Get());
    fs::path name;
    const FileDescriptor usual = CreateIn(FolderOf(target_), 0666, name);
    if (!usual.IsOpen()) return;
    unlink(name.c_str());
    CopyFileAccess(usual.Get(), file_.Get());
}

bool ReplacingFile::TakePlaceOfTarget(const FileDescriptor& target) {
    TakeAccessOf(target);
    if (fsync(file_.Get()) != 0 || !file_.Close()) return false;
    if (rename(temporary_.c_str(), target_.c_str()) != 0) return false;
    temporary_.clear();
    FlushFolderOf(target_);
    return true;
}

bool ReplacingFile::RewriteTarget(const FileDescriptor& target) {
    const std::int64_t bytes = SizeOf(file_);
    if (bytes < 0 || fsync(file_.Get()) != 0 || !Reserve(target, bytes)) return false;
    // From here on the temporary file is the only complete copy, and stays when this fails.
    const fs::path copy = std::exchange(temporary_, {});
    FlushFolderOf(target_);
    const bool rewritten = CopyBytes(file_, target, bytes) && ftruncate(target.Get(), bytes) == 0 &&
                           fsync(target.Get()) == 0;
    if (rewritten) unlink(copy.c_str());
    return rewritten;
}

}  // namespace sonavel
