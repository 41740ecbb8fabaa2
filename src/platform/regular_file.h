// A regular file that is read from any place. Devices, pipes and folders are refused, so that no
// name can hold up the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/file_descriptor.h"

namespace sonavel {

class RegularFile {
  public:
    // False unless the path names a regular file that may be read.
    bool Open(const std::filesystem::path& path);

    // What was there when it was opened, in bytes.
    std::uint64_t Size() const { return size_; }
    // Fills `to` with the bytes from `offset` on. Returns how many there were; fewer than asked for
    // only at the end, or where they cannot be read.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) const;

  private:
    FileDescriptor file_;
    std::uint64_t size_ = 0;
};

}  // namespace sonavel
