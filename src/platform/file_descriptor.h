// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace sonavel {

class FileDescriptor {
  public:
    FileDescriptor() = default;
    // Takes over what open() gave, also the -1 of a failure.
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    // False when there was nothing to close, or the system reports what failed before.
    bool Close() {
        const int descriptor = std::exchange(descriptor_, -1);
        return descriptor >= 0 && close(descriptor) == 0;
    }

  private:
    int descriptor_ = -1;
};

}  // namespace sonavel
