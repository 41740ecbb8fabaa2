#include "codec/main/padded_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace sonavel {
namespace {

// More than any data that was ever cut off.
constexpr sf_count_t kPaddingBytes = sf_count_t{1} << 44;

PaddedFile& Self(void* self) {
    return *static_cast<PaddedFile*>(self);
}

}  // namespace

bool PaddedFile::CanHelp(const char* path) {
    char magic[4] = {};
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return false;
    const bool isCaf =
        read(descriptor, magic, sizeof magic) == sizeof magic && std::memcmp(magic, "caff", 4) == 0;
    close(descriptor);
    return isCaf;
}

PaddedFile::PaddedFile(const char* path) : descriptor_(open(path, O_RDONLY | O_CLOEXEC)) {
    struct stat status;
    if (descriptor_ >= 0 && fstat(descriptor_, &status) == 0) realBytes_ = status.st_size;
}

PaddedFile::~PaddedFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

SF_VIRTUAL_IO& PaddedFile::Callbacks() {
    static SF_VIRTUAL_IO callbacks = {Length, Seek, Read, Write, Tell};
    return callbacks;
}

sf_count_t PaddedFile::Length(void* self) {
    return Self(self).realBytes_ + kPaddingBytes;
}

sf_count_t PaddedFile::Seek(sf_count_t offset, int whence, void* self) {
    PaddedFile& file = Self(self);
    const sf_count_t from = whence == SEEK_SET   ? 0
                            : whence == SEEK_CUR ? file.position_
                                                 : Length(self);
    if (offset < -from || offset > Length(self) - from) return -1;
    return file.position_ = from + offset;
}

sf_count_t PaddedFile::Read(void* to, sf_count_t bytes, void* self) {
    PaddedFile& file = Self(self);
    if (bytes < 0) return 0;
    ssize_t got = pread(file.descriptor_, to, static_cast<std::size_t>(bytes), file.position_);
    if (got < 0) got = 0;
    std::memset(static_cast<char*>(to) + got, 0, static_cast<std::size_t>(bytes - got));
    file.position_ += bytes;
    return bytes;
}

sf_count_t PaddedFile::Write(const void*, sf_count_t, void*) {
    return 0;
}

sf_count_t PaddedFile::Tell(void* self) {
    return Self(self).position_;
}

}  // namespace sonavel
