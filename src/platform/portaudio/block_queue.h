// A lock-free ring of blocks from the user-interface thread, which pushes, to the audio callback,
// which pops.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

#include "platform/wave_device.h"

namespace sonavel {

class BlockQueue {
  public:
    static constexpr std::size_t kCapacity = 64;

    // False when the queue is full.
    bool Push(WaveBlock& block) {
        const std::size_t tail = tail_.load(std::memory_order_relaxed);
        if (tail - head_.load(std::memory_order_acquire) == kCapacity) return false;
        blocks_[tail % kCapacity] = &block;
        tail_.store(tail + 1, std::memory_order_release);
        return true;
    }

    // Null when the queue is empty.
    WaveBlock* Pop() {
        const std::size_t head = head_.load(std::memory_order_relaxed);
        if (head == tail_.load(std::memory_order_acquire)) return nullptr;
        WaveBlock* const block = blocks_[head % kCapacity];
        head_.store(head + 1, std::memory_order_release);
        return block;
    }

    // For the popping side.
    bool IsEmpty() const {
        return head_.load(std::memory_order_relaxed) == tail_.load(std::memory_order_acquire);
    }

  private:
    std::array<WaveBlock*, kCapacity> blocks_{};
    std::atomic<std::size_t> head_{0};
    std::atomic<std::size_t> tail_{0};
};

}  // namespace sonavel
