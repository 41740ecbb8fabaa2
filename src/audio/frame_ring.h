// Stereo frames on their way from the thread that renders them to the one that plays them, without
// a lock.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace sonavel {

// One thread puts, another takes; neither ever waits.
class FrameRing {
  public:
    explicit FrameRing(std::size_t frames) : pairs_(2 * frames) {}

    std::size_t Capacity() const { return pairs_.size() / 2; }
    // Frames that are there; for either thread.
    std::size_t Filled() const {
        const std::uint64_t taken = taken_.load(std::memory_order_acquire);
        return static_cast<std::size_t>(put_.load(std::memory_order_acquire) - taken);
    }
    // No more than fit beside those that are there.
    void Put(std::span<const float> pairs) {
        const std::uint64_t put = put_.load(std::memory_order_relaxed);
        const std::size_t at = 2 * (put % (pairs_.size() / 2));
        const std::size_t first = std::min(pairs.size(), pairs_.size() - at);
        std::ranges::copy(pairs.first(first), pairs_.begin() + static_cast<std::ptrdiff_t>(at));
        std::ranges::copy(pairs.subspan(first), pairs_.begin());
        put_.store(put + pairs.size() / 2, std::memory_order_release);
    }

    // Fills as many of the pairs as there are frames, from the first on, and returns how many.
    std::size_t Take(std::span<float> pairs) {
        const std::uint64_t taken = taken_.load(std::memory_order_relaxed);
        const auto there = static_cast<std::size_t>(put_.load(std::memory_order_acquire) - taken);
        const std::size_t frames = std::min(pairs.size() / 2, there);
        const std::size_t at = 2 * (taken % (pairs_.size() / 2));
        const std::size_t first = std::min(2 * frames, pairs_.size() - at);
        std::copy_n(pairs_.begin() + static_cast<std::ptrdiff_t>(at), first, pairs.begin());
        std::copy_n(pairs_.begin(), 2 * frames - first,
                    pairs.begin() + static_cast<std::ptrdiff_t>(first));
        taken_.store(taken + frames, std::memory_order_release);
        return frames;
    }
    // How many have been taken since the beginning.
    std::uint64_t Taken() const { return taken_.load(std::memory_order_acquire); }

  private:
    std::vector<float> pairs_;
    std::atomic<std::uint64_t> put_{0};
    std::atomic<std::uint64_t> taken_{0};
};

}  // namespace sonavel
