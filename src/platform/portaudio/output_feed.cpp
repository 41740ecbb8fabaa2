#include "platform/portaudio/output_feed.h"

#include <algorithm>
#include <cstring>

namespace sonavel {

OutputFeed::OutputFeed(const WaveFormat& format, BlockNotifier::Channel& channel)
    : frameBytes_(format.BlockAlign()), silence_(Silence(format)), channel_(channel) {}

bool OutputFeed::Push(WaveBlock& block) {
    block.done.store(false, std::memory_order_relaxed);
    return queue_.Push(block);
}

void OutputFeed::ReturnAll() {
    for (WaveBlock* block : {tail_, current_}) {
        if (block) Return(*block);
    }
    while (WaveBlock* const block = queue_.Pop()) Return(*block);
    tail_ = nullptr;
    current_ = nullptr;
}

void OutputFeed::Render(std::span<std::uint8_t> out, std::uint64_t latencyFrames) {
    ReturnHeardTail(latencyFrames);
    const bool paused = paused_.load(std::memory_order_acquire);
    while (!paused && !out.empty() && NextBlock()) {
        const std::size_t count = std::min(out.size(), current_->data.size() - offset_);
        std::memcpy(out.data(), current_->data.data() + offset_, count);
        out = out.subspan(count);
        offset_ += count;
        rendered_ += count;
        if (offset_ == current_->data.size()) FinishBlock();
    }
    std::ranges::fill(out, silence_);
    rendered_ += out.size();
}

bool OutputFeed::NextBlock() {
    if (current_) return true;
    current_ = queue_.Pop();
    offset_ = 0;
    if (!current_) return false;
    if (tail_) Return(*tail_);
    tail_ = nullptr;
    return true;
}

void OutputFeed::FinishBlock() {
    if (queue_.IsEmpty()) {
        tail_ = current_;
        tailEnd_ = rendered_;
    } else {
        Return(*current_);
    }
    current_ = nullptr;
}

void OutputFeed::Return(WaveBlock& block) {
    block.done.store(true, std::memory_order_release);
    channel_.Signal();
}

void OutputFeed::ReturnHeardTail(std::uint64_t latencyFrames) {
    if (!tail_ || rendered_ < tailEnd_ + latencyFrames * frameBytes_) return;
    Return(*tail_);
    tail_ = nullptr;
}

}  // namespace sonavel
