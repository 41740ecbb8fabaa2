// Samples that their owner lends to whoever writes them down: they are copied on another thread,
// and wherever the owner moves them meanwhile, the copy finds them. Nobody waits for more than what
// is about to be destroyed.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "sound/loans.h"
#include "sound/sound_buffer.h"

namespace sonavel {

class LentSamples {
  public:
    // Less is copied at once, in a fraction of a millisecond.
    static constexpr std::uint64_t kLeastBytes = std::uint64_t{256} << 10;

    // Null when there is no memory for the copy. SoundBuffer::Lend() makes it of what the block
    // looks after.
    static std::shared_ptr<LentSamples> Of(std::span<const std::uint8_t> lent);

    std::uint64_t Size() const { return copy_.Size(); }
    // Copies what nobody copies yet and waits for the rest; on any thread.
    void Settle();
    // The copy, once it is complete.
    std::span<const std::uint8_t> Bytes();

    // --- For the thread that owns the samples

    // As Settle(), of what lies there alone: all that touches the place, or what lies in it only in
    // part and could not be moved along.
    enum class Touching : std::uint8_t { kAnyPart, kNotAsAWhole };
    void SettleAt(const BytePlace& place, Touching touching);
    // Until Release() nothing is read; waits for the pieces that are just being copied.
    void Hold();
    void Release();
    // While it is held: what lies in that place as a whole is found at `to` from now on.
    void Moved(const BytePlace& from, const std::uint8_t* to);

  private:
    enum class State : std::uint8_t { kWaiting, kBeingCopied, kCopied };
    struct Piece {
        BytePlace place;
        State state = State::kWaiting;
    };

    LentSamples(std::span<const std::uint8_t> lent, SoundBuffer copy);
    void CopyPiece(std::size_t index, std::unique_lock<std::mutex>& lock);
    template <class Wanted>
    void SettleThose(const Wanted& wanted);

    SoundBuffer copy_;
    std::mutex mutex_;
    std::condition_variable copied_;
    std::condition_variable resumed_;
    std::vector<Piece> pieces_;
    std::size_t beingCopied_ = 0;
    bool isHeld_ = false;
};

}  // namespace sonavel
