#include "sound/sound_buffer.h"

#include <algorithm>
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
    if (!data_) return AllocBuffer(bytes);
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

bool SoundBuffer::ExchangePiece(std::size_t start, std::size_t length, SoundBuffer& piece) {
    if (length == size_) {
        std::swap(data_, piece.data_);
        std::swap(size_, piece.size_);
        return true;
    }
    const std::size_t common = std::min(length, piece.size_);
    if (piece.size_ > common) {
        if (!TakeIn(start + common, std::as_const(piece).Bytes().subspan(common))) return false;
        piece.ReAllocBuffer(common);
    } else if (!GiveTo(piece, start + common, length - common)) {
        return false;
    }
    if (common > 0) std::swap_ranges(data_ + start, data_ + start + common, piece.data_);
    return true;
}

bool SoundBuffer::TakeIn(std::size_t at, std::span<const std::uint8_t> bytes) {
    const std::size_t behind = size_ - at;
    if (!ReAllocBuffer(size_ + bytes.size())) return false;
    std::memmove(data_ + at + bytes.size(), data_ + at, behind);
    std::memcpy(data_ + at, bytes.data(), bytes.size());
    return true;
}

bool SoundBuffer::GiveTo(SoundBuffer& piece, std::size_t at, std::size_t length) {
    if (length == 0) return true;
    const std::size_t end = piece.size_;
    if (!piece.ReAllocBuffer(end + length)) return false;
    std::memcpy(piece.data_ + end, data_ + at, length);
    std::memmove(data_ + at, data_ + at + length, size_ - at - length);
    return ReAllocBuffer(size_ - length);
}

void SoundBuffer::FreeBuffer() {
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
}

}  // namespace sonavel
