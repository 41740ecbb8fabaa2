#include "platform/portaudio/input_feed.h"

#include <algorithm>
#include <cstring>

namespace sonavel {

InputFeed::InputFeed(BlockNotifier::Channel& channel, std::atomic<std::uint64_t>& losses)
    : channel_(channel), losses_(losses) {}

bool InputFeed::Push(WaveBlock& block) {
    block.recordedBytes = 0;
    block.done.store(false, std::memory_order_relaxed);
    return queue_.Push(block);
}

void InputFeed::Capture(std::span<const std::uint8_t> in) {
    while (!in.empty()) {
        if (!current_) current_ = queue_.Pop();
        if (!current_) {
            losses_.fetch_add(1, std::memory_order_relaxed);
            return;
        }
        std::uint32_t& filled = current_->recordedBytes;
        const std::size_t count = std::min(in.size(), current_->data.size() - filled);
        std::memcpy(current_->data.data() + filled, in.data(), count);
        in = in.subspan(count);
        filled += static_cast<std::uint32_t>(count);
        if (filled == current_->data.size()) ReturnCurrent();
    }
}

void InputFeed::ReturnCurrent() {
    if (!current_) return;
    current_->done.store(true, std::memory_order_release);
    current_ = nullptr;
    channel_.Signal();
}

void InputFeed::ReturnAll() {
    do {
        ReturnCurrent();
        current_ = queue_.Pop();
    } while (current_);
}

}  // namespace sonavel
