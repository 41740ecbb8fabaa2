// Hands whole values from one thread to another without a lock. Only the latest one counts: what
// was not taken before the next one came is dropped.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <utility>

namespace sonavel {

// One thread gives, another takes; neither ever waits.
template <class Value>
class LatestValue {
  public:
    void Give(Value value) {
        slots_[giving_] = std::move(value);
        giving_ = between_.exchange(giving_ | kFresh, std::memory_order_acq_rel) & kSlot;
    }

    // Null when nothing has been given since; else the taking thread's own until it takes again.
    Value* Take() {
        if (!(between_.load(std::memory_order_relaxed) & kFresh)) return nullptr;
        taken_ = between_.exchange(taken_, std::memory_order_acq_rel) & kSlot;
        return &slots_[taken_];
    }

  private:
    static constexpr std::uint8_t kSlot = 3;
    static constexpr std::uint8_t kFresh = 4;

    // One of the giver, one of the taker, and one between them that both exchange for their own.
    std::array<Value, 3> slots_{};
    std::uint8_t giving_ = 0;
    std::atomic<std::uint8_t> between_{1};
    std::uint8_t taken_ = 2;
};

}  // namespace sonavel
