#include "platform/portaudio/input_feed.h"

#include <algorithm>
#include <cstring>

namespace sonavel {

bool InputFeed::Push(WaveBlock& block) {
    block.recordedBytes = 0;
    block.afterGap = false;
    block.done.store(false, std::memory_order_relaxed);
    return queue_.Push(block);
}

void InputFeed::NoteGap() {
    gapBefore_ = true;
    ReturnCurrent();
}

void InputFeed::Capture(std::span<const std::uint8_t> in) {
    while (!in.empty()) {
        if (!current_ && !TakeBlock()) {
            gapBefore_ = true;
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

bool InputFeed::TakeBlock() {
    current_ = queue_.Pop();
    if (!current_) return false;
    current_->afterGap = gapBefore_;
    gapBefore_ = false;
    return true;
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
