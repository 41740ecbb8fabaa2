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

PaddedFile::PaddedFile(const char* path) : VirtualFile(open(path, O_RDONLY | O_CLOEXEC)) {
    struct stat status;
    if (Descriptor() >= 0 && fstat(Descriptor(), &status) == 0) realBytes_ = status.st_size;
}

sf_count_t PaddedFile::Length() {
    return realBytes_ + kPaddingBytes;
}

sf_count_t PaddedFile::Seek(sf_count_t offset, int whence) {
    const sf_count_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? position_ : Length();
    if (offset < -from || offset > Length() - from) return -1;
    return position_ = from + offset;
}

sf_count_t PaddedFile::Read(void* to, sf_count_t bytes) {
    if (bytes < 0) return 0;
    ssize_t got = pread(Descriptor(), to, static_cast<std::size_t>(bytes), position_);
    if (got < 0) got = 0;
    std::memset(static_cast<char*>(to) + got, 0, static_cast<std::size_t>(bytes - got));
    position_ += bytes;
    return bytes;
}

sf_count_t PaddedFile::Write(const void*, sf_count_t) {
    return 0;
}

sf_count_t PaddedFile::Tell() {
    return position_;
}

}  // namespace sonavel
