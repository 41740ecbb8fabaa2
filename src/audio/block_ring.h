// The ring of blocks that go round between a device and the player or the recorder: queued at its
// next place, taken back at its oldest.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/wave_device.h"

namespace sonavel {

class BlockRing {
  public:
    static constexpr int kCount = 10;

    // Gives every block new memory of this size and makes all of them free. False when it cannot be
    // had. The device must hold none of the blocks.
    bool Allocate(std::size_t blockBytes);
    void Release();

    bool IsNextFree() const { return !entries_[next_].queued; }
    WaveBlock& Next() { return entries_[next_].block; }
    // The next block now belongs to the device; `startByte` is where in the sound its data begins.
    void QueueNext(std::uint64_t startByte);

    // The device is through with the oldest block.
    bool IsOldestDone() const;
    WaveBlock& Oldest() { return entries_[oldest_].block; }
    const WaveBlock& Oldest() const { return entries_[oldest_].block; }
    std::uint64_t OldestStart() const { return entries_[oldest_].startByte; }
    void FreeOldest();

    bool AreAllFree() const { return queuedCount_ == 0; }

  private:
    struct Entry {
        WaveBlock block;
        bool queued = false;
        std::uint64_t startByte = 0;
    };

    std::array<Entry, kCount> entries_;
    int next_ = 0;
    int oldest_ = 0;
    int queuedCount_ = 0;
};

}  // namespace sonavel
