// Where the player's next bytes come from: a range of the sound, with a part left out or played
// over and over.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace sonavel {

// Byte offsets [start, end).
struct ByteRange {
    std::uint64_t start = 0;
    std::uint64_t end = 0;
};

class PlaySource {
  public:
    // Starts over at the range's first byte with nothing left out. `bytesPerSample` is 1, 2 or 4.
    void Start(ByteRange range, unsigned bytesPerSample);
    void SetSkip(ByteRange skip) { skip_ = skip; }
    void ClearSkip() { skip_.reset(); }
    // What is played again and again while looping, from when the current range has ended.
    void SetLoopRange(ByteRange range) { loop_ = range; }
    void SetLooping(bool looping) { looping_ = looping; }
    bool IsLooping() const { return looping_; }

    // Fills the whole block with the next bytes of the sound, the range's last sample repeated
    // behind its end. Returns the byte at which the block starts, before anything left out; nothing
    // when there is nothing left to play, also where the sound has become shorter than the range.
    std::optional<std::uint64_t> FillBlock(std::span<const std::uint8_t> sound,
                                           std::span<std::uint8_t> block);

    std::uint64_t Position() const { return position_; }
    std::uint64_t End() const { return end_; }
    // True from one byte before the end on.
    bool IsAtEnd() const { return end_ <= position_ + 1; }

  private:
    void LeaveOutSkipped();
    void CopyPadded(std::span<const std::uint8_t> sound, std::span<std::uint8_t> block) const;

    ByteRange loop_;
    std::optional<ByteRange> skip_;
    std::uint64_t position_ = 0;
    std::uint64_t end_ = 0;
    unsigned bytesPerSample_ = 1;
    bool looping_ = false;
};

}  // namespace sonavel
