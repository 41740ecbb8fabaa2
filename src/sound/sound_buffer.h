// The one contiguous block that holds all frames of a sound. Growing and shrinking use realloc,
// which moves large blocks by remapping their pages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "sound/loans.h"

namespace sonavel {

class SoundBuffer {
  public:
    SoundBuffer() = default;
    ~SoundBuffer();
    SoundBuffer(SoundBuffer&& other) noexcept;
    SoundBuffer& operator=(SoundBuffer&& other) noexcept;

    // Replaces the block by one of `bytes` bytes of unspecified content. False when the memory
    // cannot be had; the old block is then kept.
    bool AllocBuffer(std::size_t bytes);
    // Likewise, but of zeros. What is never written costs no memory.
    bool AllocZeros(std::size_t bytes);
    // Keeps the first min(old, new) bytes; bytes gained are unspecified. On failure nothing
    // changes; becoming smaller does not fail.
    bool ReAllocBuffer(std::size_t bytes);
    // Makes this an equal block of its own. On failure nothing changes.
    bool CopyFrom(const SoundBuffer& other);
    // Likewise of a piece that is there. What others still read of the piece they find in the copy
    // from now on.
    bool CopyPiece(const SoundBuffer& other, std::size_t start, std::size_t length);
    // Moves bytes within the block, which may overlap.
    void MoveWithin(std::size_t from, std::size_t count, std::size_t to);
    // Puts `piece` in the place of the `length` bytes from `start` on, which must be there, and
    // these into `piece`. Costs what is exchanged and the moving of what lies behind it; of whole
    // blocks nothing. On failure nothing changes.
    bool ExchangePiece(std::size_t start, std::size_t length, SoundBuffer& piece);
    void FreeBuffer();

    // Lends bytes that are there to whoever copies them on another thread. The block may be changed
    // and given up all the same, after SettleLent() of what is overwritten from outside. Null when
    // there is no memory.
    std::shared_ptr<LentSamples> Lend(std::size_t start, std::size_t length) const;
    void SettleLent(std::size_t start, std::size_t length) const;

    std::size_t Size() const { return size_; }
    std::uint8_t* Data() { return data_; }
    const std::uint8_t* Data() const { return data_; }
    std::span<std::uint8_t> Bytes() { return {data_, size_}; }
    std::span<const std::uint8_t> Bytes() const { return {data_, size_}; }

  private:
    BytePlace Place(std::size_t start, std::size_t length) const {
        return PlaceOf(Bytes().subspan(start, length));
    }
    bool Take(void* block, std::size_t bytes);
    void SwapWith(SoundBuffer& piece, std::size_t start, std::size_t count);
    bool TakeIn(std::size_t at, std::span<const std::uint8_t> bytes);
    bool GiveTo(SoundBuffer& piece, std::size_t at, std::size_t length);

    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
    mutable Loans loans_;
};

}  // namespace sonavel
