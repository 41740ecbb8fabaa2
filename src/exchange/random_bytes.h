// Bytes that can be read from any place: of a file of any size, or in memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "platform/regular_file.h"

namespace sonavel {

class RandomBytes {
  public:
    virtual ~RandomBytes() = default;

    virtual std::uint64_t Size() const = 0;
    // Fills `to` with the bytes from `offset` on. Returns how many there were; fewer than asked for
    // only at the end, or where they cannot be read.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) = 0;

    // As many of `bytes` bytes from `offset` on as there are. Takes no more memory than that.
    std::vector<std::uint8_t> Part(std::uint64_t offset, std::uint64_t bytes);
};

// The bytes stay with their owner.
class BytesInMemory : public RandomBytes {
  public:
    explicit BytesInMemory(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint64_t Size() const override { return bytes_.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) override;

  private:
    std::span<const std::uint8_t> bytes_;
};

class BytesOfFile : public RandomBytes {
  public:
    // False unless the path names a regular file that may be read.
    bool Open(const std::filesystem::path& path) { return file_.Open(path); }

    std::uint64_t Size() const override { return file_.Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) override {
        return file_.ReadAt(offset, to);
    }

  private:
    RegularFile file_;
};

}  // namespace sonavel
