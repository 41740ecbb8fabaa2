// What the input callback does with the queued blocks: it fills them with the device's sound and
// marks them as done. No lock, no allocation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/block_queue.h"
#include "platform/wave_device.h"

namespace sonavel {

class InputFeed {
  public:
    // The channel must outlive the feed.
    InputFeed(const WaveFormat&, BlockNotifier::Channel& channel) : channel_(channel) {}

    // --- On the user-interface thread ---
    bool Push(WaveBlock& block);
    // Marks the block being filled, or every block, as done. Only while no callback is inside.
    void ReturnCurrent();
    void ReturnAll();

    // --- In the callback ---
    // Sound was lost before what is captured next, which begins a new block that says so.
    void NoteGap();
    // What finds no block is lost.
    void Capture(std::span<const std::uint8_t> in);

  private:
    bool TakeBlock();

    BlockNotifier::Channel& channel_;
    BlockQueue queue_;
    WaveBlock* current_ = nullptr;
    bool gapBefore_ = false;
};

}  // namespace sonavel
