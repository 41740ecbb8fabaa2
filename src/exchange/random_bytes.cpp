#include "exchange/random_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace sonavel {

std::vector<std::uint8_t> RandomBytes::Part(std::uint64_t offset, std::uint64_t bytes) {
    const std::uint64_t there = offset < Size() ? Size() - offset : 0;
    std::vector<std::uint8_t> part(static_cast<std::size_t>(std::min(bytes, there)));
    part.resize(ReadAt(offset, part));
    return part;
}

std::size_t BytesInMemory::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) {
    if (offset >= bytes_.size()) return 0;
    const auto from = bytes_.subspan(static_cast<std::size_t>(offset));
    const std::size_t count = std::min(from.size(), to.size());
    std::copy_n(from.begin(), count, to.begin());
    return count;
}

bool BytesOfFile::Open(const std::filesystem::path& path) {
    // A pipe without a writer would hold the caller for ever.
    file_ = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file_.IsOpen() || fstat(file_.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    size_ = static_cast<std::uint64_t>(status.st_size);
    return true;
}

std::size_t BytesOfFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) {
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
