#include "platform/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace sonavel {
namespace {

constexpr std::chrono::milliseconds kTryAgainAfter{5};

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder, std::chrono::milliseconds longestWait)
    : folder_(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    const auto end = std::chrono::steady_clock::now() + longestWait;
    for (held_ = !folder_.IsOpen(); !held_; std::this_thread::sleep_for(kTryAgainAfter)) {
        held_ = flock(folder_.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
        if (held_ || std::chrono::steady_clock::now() >= end) return;
    }
}

}  // namespace sonavel
