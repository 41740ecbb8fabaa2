#include "audio/block_ring.h"

#include <new>

namespace sonavel {

bool BlockRing::Allocate(std::size_t blockBytes) {
    Release();
    try {
        for (Entry& entry : entries_) entry.block.data.resize(blockBytes);
    } catch (const std::bad_alloc&) {
        Release();
        return false;
    }
    return true;
}

void BlockRing::Release() {
    for (Entry& entry : entries_) {
        entry.block.data = {};
        entry.queued = false;
        entry.startByte = 0;
    }
    next_ = 0;
    oldest_ = 0;
    queuedCount_ = 0;
}

void BlockRing::QueueNext(std::uint64_t startByte) {
    entries_[next_].queued = true;
    entries_[next_].startByte = startByte;
    next_ = (next_ + 1) % kCount;
    ++queuedCount_;
}

bool BlockRing::IsOldestDone() const {
    return entries_[oldest_].queued && entries_[oldest_].block.done.load(std::memory_order_acquire);
}

void BlockRing::FreeOldest() {
    entries_[oldest_].queued = false;
    oldest_ = (oldest_ + 1) % kCount;
    --queuedCount_;
}

}  // namespace sonavel
