#include "codec/main/virtual_file.h"

#include <unistd.h>

#include <utility>

namespace sonavel {
namespace {

// Whom the library was told to call.
VirtualFile* Self(void* file) {
    return static_cast<VirtualFile*>(file);
}

}  // namespace

VirtualFile::~VirtualFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

int VirtualFile::CloseDescriptor() {
    return close(std::exchange(descriptor_, -1));
}

SNDFILE* VirtualFile::Open(int mode, SF_INFO& info) {
    static SF_VIRTUAL_IO callbacks = {
        [](void* file) { return Self(file)->Length(); },
        [](sf_count_t offset, int whence, void* file) { return Self(file)->Seek(offset, whence); },
        [](void* to, sf_count_t bytes, void* file) { return Self(file)->Read(to, bytes); },
        [](const void* from, sf_count_t bytes, void* file) {
            return Self(file)->Write(from, bytes);
        },
        [](void* file) { return Self(file)->Tell(); }};
    return sf_open_virtual(&callbacks, mode, &info, this);
}

}  // namespace sonavel
