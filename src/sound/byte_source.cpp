#include "sound/byte_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace sonavel {

bool FileSource::Open(const std::filesystem::path& path) {
    // Not blocking, lest the name of a pipe hold up the program for ever.
    file_ = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file_.IsOpen() || fstat(file_.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    size_ = std::min(static_cast<std::uint64_t>(status.st_size), kMostBytes);
    return true;
}

std::size_t FileSource::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) {
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

std::uint64_t ByteCursor::Remaining() const {
    const std::uint64_t size = source_.Size();
    return position_ < size ? size - position_ : 0;
}

bool ByteCursor::WindowHolds(std::size_t bytes) const {
    return position_ >= windowStart_ && position_ - windowStart_ + bytes <= windowSize_;
}

std::size_t ByteCursor::Read(std::span<std::uint8_t> to) {
    std::size_t got = 0;
    if (to.size() >= window_.size()) {
        got = source_.ReadAt(position_, to);
    } else {
        if (!WindowHolds(to.size())) {
            windowStart_ = position_;
            windowSize_ = source_.ReadAt(position_, window_);
        }
        got = std::min(to.size(), windowSize_ - (position_ - windowStart_));
        std::copy_n(window_.begin() + (position_ - windowStart_), got, to.begin());
    }
    position_ += got;
    return got;
}

}  // namespace sonavel
