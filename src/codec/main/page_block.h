// Memory in pages of its own, for data that a pipe takes by reference: freeing it writes nothing
// into it, as freeing a block of the heap does.
#pragma once

#include <sys/mman.h>

#include <cstdint>
#include <new>
#include <span>
#include <utility>

namespace sonavel {

class PageBlock {
  public:
    PageBlock() = default;
    explicit PageBlock(std::size_t bytes)
        : bytes_(bytes),
          memory_(
              mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
        if (memory_ == MAP_FAILED) throw std::bad_alloc();
    }
    ~PageBlock() {
        if (bytes_ != 0) munmap(memory_, bytes_);
    }
    PageBlock(PageBlock&& other) noexcept
        : bytes_(std::exchange(other.bytes_, 0)), memory_(other.memory_) {}
    PageBlock& operator=(PageBlock&& other) noexcept {
        std::swap(bytes_, other.bytes_);
        std::swap(memory_, other.memory_);
        return *this;
    }

    std::span<std::uint8_t> Bytes() const { return {static_cast<std::uint8_t*>(memory_), bytes_}; }

  private:
    std::size_t bytes_ = 0;
    void* memory_ = nullptr;
};

}  // namespace sonavel
