#include "codec/main/target_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace sonavel {

TargetFile::TargetFile(const char* path)
    : VirtualFile(open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (Descriptor() < 0) error_ = errno;
}

std::string TargetFile::Reason() const {
    return std::strerror(error_);
}

bool TargetFile::Close() {
    if (CloseDescriptor() != 0 && error_ == 0) error_ = errno;
    return !HasFailed();
}

sf_count_t TargetFile::Length() {
    struct stat status;
    return fstat(Descriptor(), &status) == 0 ? status.st_size : -1;
}

sf_count_t TargetFile::Seek(sf_count_t offset, int whence) {
    return lseek(Descriptor(), offset, whence);
}

sf_count_t TargetFile::Read(void* to, sf_count_t bytes) {
    return read(Descriptor(), to, static_cast<std::size_t>(bytes));
}

sf_count_t TargetFile::Write(const void* from, sf_count_t bytes) {
    const char* at = static_cast<const char*>(from);
    sf_count_t left = bytes;
    while (left > 0) {
        const ssize_t written = write(Descriptor(), at, static_cast<std::size_t>(left));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            error_ = written < 0 ? errno : ENOSPC;
            break;
        }
        at += written;
        left -= written;
    }
    return bytes - left;
}

sf_count_t TargetFile::Tell() {
    return lseek(Descriptor(), 0, SEEK_CUR);
}

}  // namespace sonavel
