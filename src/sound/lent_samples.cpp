#include "sound/lent_samples.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace sonavel {
namespace {

// What the owner may have to wait for: some 0.1 ms.
constexpr std::size_t kLentPieceBytes = std::size_t{256} << 10;

}  // namespace

LentSamples::LentSamples(std::span<const std::uint8_t> lent, SoundBuffer copy)
    : copy_(std::move(copy)) {
    pieces_.reserve(lent.size() / kLentPieceBytes + 1);
    for (std::size_t at = 0; at < lent.size(); at += kLentPieceBytes)
        pieces_.push_back({PlaceOf(lent.subspan(at, std::min(kLentPieceBytes, lent.size() - at)))});
}

std::shared_ptr<LentSamples> LentSamples::Of(std::span<const std::uint8_t> lent) try {
    SoundBuffer copy;
    if (!lent.empty() && !copy.AllocBuffer(lent.size())) return nullptr;
    return std::shared_ptr<LentSamples>(new LentSamples(lent, std::move(copy)));
} catch (const std::bad_alloc&) {
    return nullptr;
}

void LentSamples::CopyPiece(std::size_t index, std::unique_lock<std::mutex>& lock) {
    Piece& piece = pieces_[index];
    const BytePlace place = piece.place;
    piece.state = State::kBeingCopied;
    ++beingCopied_;
    lock.unlock();
    std::memcpy(copy_.Data() + index * kLentPieceBytes, place.data, place.bytes);
    lock.lock();
    piece.state = State::kCopied;
    --beingCopied_;
    copied_.notify_all();
}

template <class Wanted>
void LentSamples::SettleThose(const Wanted& wanted) {
    std::unique_lock lock(mutex_);
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        resumed_.wait(lock, [this] { return !isHeld_; });
        if (pieces_[i].state == State::kWaiting && wanted(pieces_[i].place)) CopyPiece(i, lock);
    }
    const auto isBeingCopied = [&](const Piece& piece) {
        return piece.state == State::kBeingCopied && wanted(piece.place);
    };
    copied_.wait(lock, [&] { return std::ranges::none_of(pieces_, isBeingCopied); });
}

void LentSamples::Settle() {
    SettleThose([](const BytePlace&) { return true; });
}

std::span<const std::uint8_t> LentSamples::Bytes() {
    Settle();
    return std::as_const(copy_).Bytes();
}

void LentSamples::SettleAt(const BytePlace& place, Touching touching) {
    SettleThose([&](const BytePlace& piece) {
        return Touch(piece, place) && (touching == Touching::kAnyPart || !LiesIn(piece, place));
    });
}

void LentSamples::Hold() {
    std::unique_lock lock(mutex_);
    isHeld_ = true;
    copied_.wait(lock, [this] { return beingCopied_ == 0; });
}

void LentSamples::Release() {
    const std::lock_guard lock(mutex_);
    isHeld_ = false;
    resumed_.notify_all();
}

void LentSamples::Moved(const BytePlace& from, const std::uint8_t* to) {
    const std::lock_guard lock(mutex_);
    for (Piece& piece : pieces_)
        if (piece.state == State::kWaiting && LiesIn(piece.place, from))
            piece.place = {to + (piece.place.Start() - from.Start()), piece.place.bytes};
}

}  // namespace sonavel
