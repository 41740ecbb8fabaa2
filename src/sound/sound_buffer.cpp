#include "sound/sound_buffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace sonavel {
namespace {

constexpr std::size_t kLargeBytes = std::size_t{4} << 20;

// Large blocks are filled from end to end at once; in huge pages that costs a fraction of the page
// faults. Only advice: where the system declines, nothing else changes. The page that the block
// begins in is advised too, because realloc remaps only a mapping whose pages are all alike and
// copies the block otherwise.
void AdviseHugePages(std::uint8_t* block, std::size_t bytes) {
    if (bytes < kLargeBytes) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t inPage = reinterpret_cast<std::uintptr_t>(block) % page;
    madvise(block - inPage, bytes + inPage, MADV_HUGEPAGE);
}

}  // namespace

SoundBuffer::~SoundBuffer() {
    Free();
}

SoundBuffer::SoundBuffer(SoundBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

SoundBuffer& SoundBuffer::operator=(SoundBuffer&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    return *this;
}

bool SoundBuffer::Allocate(std::size_t bytes) {
    void* block = bytes ? std::malloc(bytes) : nullptr;
    if (bytes && !block) return false;
    Free();
    data_ = static_cast<std::uint8_t*>(block);
    size_ = bytes;
    AdviseHugePages(data_, size_);
    return true;
}

bool SoundBuffer::Resize(std::size_t bytes) {
    if (bytes == 0) {
        Free();
        return true;
    }
    if (void* block = std::realloc(data_, bytes))
        data_ = static_cast<std::uint8_t*>(block);
    else if (bytes > size_)
        return false;
    size_ = bytes;
    return true;
}

bool SoundBuffer::CopyFrom(const SoundBuffer& other) {
    if (this == &other) return true;
    if (!Allocate(other.size_)) return false;
    if (size_) std::memcpy(data_, other.data_, size_);
    return true;
}

void SoundBuffer::Free() {
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
}

}  // namespace sonavel
