#include "recovery/lent_samples.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <system_error>
#include <utility>

namespace sonavel::recovery {
namespace {

// Small enough that whoever comes to help finds something left to do.
constexpr std::size_t kCopiedAtOnce = std::size_t{1} << 20;

}  // namespace

LentSamples::LentSamples(std::span<const std::uint8_t> lent, SoundBuffer copy)
    : lent_(lent),
      copy_(std::move(copy)),
      pieces_((lent.size() + kCopiedAtOnce - 1) / kCopiedAtOnce) {}

std::shared_ptr<LentSamples> LentSamples::Of(std::span<const std::uint8_t> lent) try {
    SoundBuffer copy;
    if (!lent.empty() && !copy.AllocBuffer(lent.size())) return nullptr;
    return std::shared_ptr<LentSamples>(new LentSamples(lent, std::move(copy)));
} catch (const std::bad_alloc&) {
    return nullptr;
}

void LentSamples::Settle() {
    for (std::size_t piece; (piece = next_++) < pieces_;) {
        const std::size_t start = piece * kCopiedAtOnce;
        const std::size_t bytes = std::min(kCopiedAtOnce, lent_.size() - start);
        std::memcpy(copy_.Data() + start, lent_.data() + start, bytes);
        if (++done_ == pieces_) done_.notify_all();
    }
    for (std::size_t done; (done = done_) < pieces_;) done_.wait(done);
}

std::span<const std::uint8_t> LentSamples::Bytes() {
    Settle();
    return std::as_const(copy_).Bytes();
}

SampleCopier::SampleCopier() {
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        // The others copy for themselves.
    }
}

SampleCopier::~SampleCopier() {
    {
        const std::lock_guard lock(mutex_);
        stops_ = true;
        added_.notify_one();
    }
    if (thread_.joinable()) thread_.join();
}

void SampleCopier::Add(std::shared_ptr<LentSamples> samples) {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(samples));
    added_.notify_one();
}

void SampleCopier::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        added_.wait(lock, [this] { return stops_ || !waiting_.empty(); });
        if (stops_) return;
        const std::shared_ptr<LentSamples> next = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        next->Settle();
        lock.lock();
    }
}

}  // namespace sonavel::recovery
