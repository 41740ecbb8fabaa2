// What the input callback does with the queued blocks: it fills them with the device's sound and
// marks them as done. No lock, no allocation.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/block_queue.h"
#include "platform/wave_device.h"

namespace sonavel {

class InputFeed {
  public:
    // `losses` counts the callbacks whose sound found no block; it and the channel must outlive the
    // feed.
    InputFeed(BlockNotifier::Channel& channel, std::atomic<std::uint64_t>& losses);

    // --- On the user-interface thread ---
    bool Push(WaveBlock& block);
    // Marks the block being filled, or every block, as done. Only while no callback runs.
    void ReturnCurrent();
    void ReturnAll();

    // --- In the callback ---
    void Capture(std::span<const std::uint8_t> in);

  private:
    BlockNotifier::Channel& channel_;
    std::atomic<std::uint64_t>& losses_;
    BlockQueue queue_;
    WaveBlock* current_ = nullptr;
};

}  // namespace sonavel
