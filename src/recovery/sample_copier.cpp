#include "recovery/sample_copier.h"

#include <system_error>
#include <utility>

namespace sonavel::recovery {

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
