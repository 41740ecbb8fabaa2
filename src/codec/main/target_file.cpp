#include "codec/main/target_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace sonavel {
namespace {

TargetFile& Self(void* self) {
    return *static_cast<TargetFile*>(self);
}

}  // namespace

TargetFile::TargetFile(const char* path)
    : descriptor_(open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) error_ = errno;
}

TargetFile::~TargetFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

std::string TargetFile::Reason() const {
    return std::strerror(error_);
}

bool TargetFile::Close() {
    if (close(std::exchange(descriptor_, -1)) != 0 && error_ == 0) error_ = errno;
    return !HasFailed();
}

SF_VIRTUAL_IO& TargetFile::Callbacks() {
    static SF_VIRTUAL_IO callbacks = {Length, Seek, Read, Write, Tell};
    return callbacks;
}

sf_count_t TargetFile::Length(void* self) {
    struct stat status;
    return fstat(Self(self).descriptor_, &status) == 0 ? status.st_size : -1;
}

sf_count_t TargetFile::Seek(sf_count_t offset, int whence, void* self) {
    return lseek(Self(self).descriptor_, offset, whence);
}

sf_count_t TargetFile::Read(void* to, sf_count_t bytes, void* self) {
    return read(Self(self).descriptor_, to, static_cast<std::size_t>(bytes));
}

sf_count_t TargetFile::Write(const void* from, sf_count_t bytes, void* self) {
    TargetFile& file = Self(self);
    const char* at = static_cast<const char*>(from);
    sf_count_t left = bytes;
    while (left > 0) {
        const ssize_t written = write(file.descriptor_, at, static_cast<std::size_t>(left));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            file.error_ = written < 0 ? errno : ENOSPC;
            break;
        }
        at += written;
        left -= written;
    }
    return bytes - left;
}

sf_count_t TargetFile::Tell(void* self) {
    return lseek(Self(self).descriptor_, 0, SEEK_CUR);
}

}  // namespace sonavel
