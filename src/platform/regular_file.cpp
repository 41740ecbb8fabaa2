#include "platform/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace sonavel {

bool RegularFile::Open(const std::filesystem::path& path) {
    // A pipe without a writer would hold the caller for ever.
    file_ = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file_.IsOpen() || fstat(file_.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    size_ = static_cast<std::uint64_t>(status.st_size);
    return true;
}

std::size_t RegularFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) const {
    std::size_t done = 0;
    while (done < to.size() && offset + done < size_) {
        const ssize_t got = pread(file_.Get(), to.data() + done, to.size() - done,
                                  static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

}  // namespace sonavel
