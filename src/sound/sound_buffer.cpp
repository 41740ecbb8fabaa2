#include "sound/sound_buffer.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "sound/huge_pages.h"

namespace sonavel {

SoundBuffer::~SoundBuffer() {
    FreeBuffer();
}

SoundBuffer::SoundBuffer(SoundBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

SoundBuffer& SoundBuffer::operator=(SoundBuffer&& other) noexcept {
    SoundBuffer taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(size_, taken.size_);
    return *this;
}

bool SoundBuffer::AllocBuffer(std::size_t bytes) {
    return Take(bytes ? std::malloc(bytes) : nullptr, bytes);
}

bool SoundBuffer::AllocZeros(std::size_t bytes) {
    return Take(bytes ? std::calloc(bytes, 1) : nullptr, bytes);
}

bool SoundBuffer::Take(void* block, std::size_t bytes) {
    if (bytes && !block) return false;
    FreeBuffer();
    data_ = static_cast<std::uint8_t*>(block);
    size_ = bytes;
    AdviseHugePages(data_, size_);
    return true;
}

bool SoundBuffer::ReAllocBuffer(std::size_t bytes) {
    if (bytes == 0) {
        FreeBuffer();
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
    if (!AllocBuffer(other.size_)) return false;
    if (size_) std::memcpy(data_, other.data_, size_);
    return true;
}

void SoundBuffer::FreeBuffer() {
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
}

}  // namespace sonavel
