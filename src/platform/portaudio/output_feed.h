// What the output callback does with the queued blocks: it moves their bytes into the device's
// buffer and marks them as done. No lock, no allocation.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/block_queue.h"
#include "platform/wave_device.h"

namespace sonavel {

class OutputFeed {
  public:
    // The channel must outlive the feed.
    OutputFeed(const WaveFormat& format, BlockNotifier::Channel& channel);

    static std::uint8_t Silence(const WaveFormat& format) {
        return format.bitsPerSample == 8 ? 128 : 0;
    }

    // --- On the user-interface thread ---
    bool Push(WaveBlock& block);
    // Silence while paused; the feed begins paused.
    void SetPaused(bool paused) { paused_.store(paused, std::memory_order_release); }
    // Marks everything as done. Only while no callback is inside.
    void ReturnAll();

    // --- In the callback ---
    // Fills whole frames; `latencyFrames` is how long the first of them takes to be heard. A block
    // is done when the next one follows, the last one when it has been heard: its owner then closes
    // the device, and nothing of it must be cut off.
    void Render(std::span<std::uint8_t> out, std::uint64_t latencyFrames);

  private:
    bool NextBlock();
    void FinishBlock();
    void Return(WaveBlock& block);
    void ReturnHeardTail(std::uint64_t latencyFrames);

    const std::size_t frameBytes_;
    const std::uint8_t silence_;
    BlockNotifier::Channel& channel_;
    BlockQueue queue_;
    std::atomic<bool> paused_{true};
    WaveBlock* current_ = nullptr;
    std::size_t offset_ = 0;  // bytes of the current block that have gone
    WaveBlock* tail_ = nullptr;
    std::uint64_t tailEnd_ = 0;   // byte of the stream behind the tail
    std::uint64_t rendered_ = 0;  // bytes of the stream so far
};

}  // namespace sonavel
