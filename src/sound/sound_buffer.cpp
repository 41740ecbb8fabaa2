#include "sound/sound_buffer.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <utility>

#include "platform/parallel.h"
#include "sound/huge_pages.h"
#include "sound/lent_samples.h"

namespace sonavel {
namespace {

// A long copy into a new block is done on all cores: most of its time goes into the pages, which
// come about as they are first written to.
void CopyBytes(std::uint8_t* to, const std::uint8_t* from, std::size_t count) {
    constexpr std::size_t kPart = std::size_t{4} << 20;
    constexpr std::size_t kLongCopy = 8 * kPart;
    if (count < kLongCopy) {
        if (count > 0) std::memcpy(to, from, count);
        return;
    }
    const auto copy = [&](std::size_t part) {
        const std::size_t at = part * kPart;
        std::memcpy(to + at, from + at, std::min(kPart, count - at));
    };
    // Of the function no copy is made, which would take memory.
    if (ComputeParts((count + kPart - 1) / kPart, std::cref(copy)) != WorkEnd::kFinished)
        std::memcpy(to, from, count);
}

}  // namespace

SoundBuffer::~SoundBuffer() {
    FreeBuffer();
}

SoundBuffer::SoundBuffer(SoundBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      loans_(std::exchange(other.loans_, {})) {}

SoundBuffer& SoundBuffer::operator=(SoundBuffer&& other) noexcept {
    SoundBuffer taken(std::move(other));
    std::swap(data_, taken.data_);
    std::swap(size_, taken.size_);
    std::swap(loans_, taken.loans_);
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
    const std::size_t kept = std::min(size_, bytes);
    SettleLent(kept, size_ - kept);
    const HeldLoans held(loans_);
    const BytePlace before = Place(0, kept);
    if (void* block = std::realloc(data_, bytes)) {
        data_ = static_cast<std::uint8_t*>(block);
        held.Moved(before, data_);
    } else if (bytes > size_) {
        return false;
    }
    size_ = bytes;
    return true;
}

bool SoundBuffer::CopyFrom(const SoundBuffer& other) {
    if (this == &other) return true;
    if (!AllocBuffer(other.size_)) return false;
    CopyBytes(data_, other.data_, size_);
    return true;
}

bool SoundBuffer::CopyPiece(const SoundBuffer& other, std::size_t start, std::size_t length) {
    if (!AllocBuffer(length)) return false;
    CopyBytes(data_, other.data_ + start, length);
    other.loans_.GoOver(other.Place(start, length), data_, loans_);
    return true;
}

void SoundBuffer::MoveWithin(std::size_t from, std::size_t count, std::size_t to) {
    if (count == 0) return;
    // What is written over and does not move along.
    if (to < from)
        SettleLent(to, std::min(count, from - to));
    else
        SettleLent(std::max(from + count, to), std::min(count, to - from));
    const BytePlace moving = Place(from, count);
    loans_.SettleAcross(moving);
    const HeldLoans held(loans_);
    std::memmove(data_ + to, data_ + from, count);
    held.Moved(moving, data_ + to);
}

bool SoundBuffer::ExchangePiece(std::size_t start, std::size_t length, SoundBuffer& piece) {
    if (length == size_) {
        std::swap(data_, piece.data_);
        std::swap(size_, piece.size_);
        std::swap(loans_, piece.loans_);
        return true;
    }
    const std::size_t common = std::min(length, piece.size_);
    if (piece.size_ > common) {
        if (!TakeIn(start + common, std::as_const(piece).Bytes().subspan(common))) return false;
        piece.ReAllocBuffer(common);
    } else if (!GiveTo(piece, start + common, length - common)) {
        return false;
    }
    SwapWith(piece, start, common);
    return true;
}

// Its first bytes.
void SoundBuffer::SwapWith(SoundBuffer& piece, std::size_t start, std::size_t count) {
    if (count == 0) return;
    piece.SettleLent(0, count);
    const BytePlace going = Place(start, count);
    if (loans_.ShareWith(piece.loans_))
        loans_.SettleAcross(going);
    else
        loans_.SettleAt(going);
    const HeldLoans held(loans_);
    std::swap_ranges(data_ + start, data_ + start + count, piece.data_);
    held.Moved(going, piece.data_);
}

bool SoundBuffer::TakeIn(std::size_t at, std::span<const std::uint8_t> bytes) {
    const std::size_t behind = size_ - at;
    if (!ReAllocBuffer(size_ + bytes.size())) return false;
    MoveWithin(at, behind, at + bytes.size());
    std::memcpy(data_ + at, bytes.data(), bytes.size());
    return true;
}

bool SoundBuffer::GiveTo(SoundBuffer& piece, std::size_t at, std::size_t length) {
    if (length == 0) return true;
    const std::size_t end = piece.size_;
    if (!piece.ReAllocBuffer(end + length)) return false;
    std::memcpy(piece.data_ + end, data_ + at, length);
    loans_.GoOver(Place(at, length), piece.data_ + end, piece.loans_);
    MoveWithin(at + length, size_ - at - length, at);
    return ReAllocBuffer(size_ - length);
}

std::shared_ptr<LentSamples> SoundBuffer::Lend(std::size_t start, std::size_t length) const {
    std::shared_ptr<LentSamples> lent = LentSamples::Of(Bytes().subspan(start, length));
    return lent && loans_.Add(lent) ? lent : nullptr;
}

void SoundBuffer::SettleLent(std::size_t start, std::size_t length) const {
    loans_.SettleAt(Place(start, length));
}

void SoundBuffer::FreeBuffer() {
    SettleLent(0, size_);
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
}

}  // namespace sonavel
