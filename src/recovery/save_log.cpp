#include "recovery/save_log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/replacing_file.h"
#include "platform/small_file.h"
#include "recovery/journal_file.h"

namespace sonavel::recovery {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLogPrefix = "saves-";
constexpr std::size_t kMostLogBytes = std::size_t{16} << 20;

bool IsOursAlone(const fs::path& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 &&
           status.st_uid == geteuid();
}

void RemoveTemporaryFilesIn(const fs::path& folder, const std::string& program) {
    const std::string prefix = ".sonavel-" + program + "-";
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(prefix) && name.ends_with(".tmp") && IsOursAlone(entry->path()))
            unlink(entry->path().c_str());
    }
}

// Folders end with a zero byte each, the one thing that no path holds. One that is torn is none.
std::set<std::string> FoldersOf(std::string_view log) {
    std::set<std::string> folders;
    for (std::size_t end; (end = log.find('\0')) != std::string_view::npos;
         log.remove_prefix(end + 1))
        if (log.front() == '/') folders.emplace(log.substr(0, end));
    return folders;
}

void RemoveBy(const fs::path& log) {
    const FileDescriptor lock(open(log.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!lock.IsOpen() || flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) return;
    const std::string program = log.filename().string().substr(kLogPrefix.size());
    const bool isNumber = program.find_first_not_of("0123456789") == std::string::npos;
    if (const auto text = ReadSmallFile(log, kMostLogBytes); text && isNumber && !program.empty())
        for (const std::string& folder : FoldersOf(*text)) RemoveTemporaryFilesIn(folder, program);
    unlink(log.c_str());
}

}  // namespace

SaveLog::~SaveLog() {
    if (!path_.empty()) unlink(path_.c_str());
}

void SaveLog::Note(const fs::path& target) {
    if (path_.empty()) {
        if (!MakePrivateFolder(folder_)) return;
        path_ = folder_ / (std::string(kLogPrefix) + std::to_string(getpid()));
        file_ = FileDescriptor(
            open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (file_.IsOpen()) flock(file_.Get(), LOCK_EX | LOCK_NB);
    }
    std::string line = FollowLinks(target).parent_path().native();
    line += '\0';
    if (file_.IsOpen()) [[maybe_unused]]
        const ssize_t written = write(file_.Get(), line.data(), line.size());
}

void RemoveLeftTemporaryFiles(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(kLogPrefix)) RemoveBy(entry->path());
    }
}

}  // namespace sonavel::recovery
