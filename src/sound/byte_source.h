// Where file readers get their bytes: a file, and a cursor that walks over it.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

#include "platform/regular_file.h"

namespace sonavel {

class FileSource {
  public:
    // What lies behind it is left out: no file format read here counts further, and the search for
    // a chunk in an endless file of zeros comes to its end.
    static constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 32;

    // False unless the path names a regular file that may be read.
    bool Open(const std::filesystem::path& path) { return file_.Open(path); }

    // What is really there and read, in bytes.
    std::uint64_t Size() const { return std::min(file_.Size(), kMostBytes); }
    // Fills `to` with the bytes from `offset` on. Returns how many there were; fewer than asked for
    // only at the end of the file or when it cannot be read.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) {
        const std::uint64_t there = offset < Size() ? Size() - offset : 0;
        return file_.ReadAt(
            offset, to.first(static_cast<std::size_t>(std::min<std::uint64_t>(to.size(), there))));
    }

  private:
    RegularFile file_;
};

// A position in a file. Small reads come from a window of it, so that walking over many
// small fields costs few reads; large ones go straight to their target.
class ByteCursor {
  public:
    explicit ByteCursor(FileSource& source) : source_(source) {}

    std::uint64_t Position() const { return position_; }
    // May lie beyond the end, where there is nothing to read.
    void Seek(std::uint64_t position) { position_ = position; }
    void Skip(std::uint64_t bytes) { position_ += bytes; }
    std::uint64_t Remaining() const;

    // Reads and moves on by what was there, which is returned.
    std::size_t Read(std::span<std::uint8_t> to);
    // False when fewer bytes were there.
    bool ReadAll(std::span<std::uint8_t> to) { return Read(to) == to.size(); }

  private:
    bool WindowHolds(std::size_t bytes) const;

    FileSource& source_;
    std::uint64_t position_ = 0;
    std::array<std::uint8_t, 4096> window_;
    std::uint64_t windowStart_ = 0;
    std::size_t windowSize_ = 0;
};

}  // namespace sonavel
