#include "platform/portaudio/block_notifier.h"

#include <utility>

namespace sonavel {

using Clock = std::chrono::steady_clock;

BlockNotifier::Channel::Channel(std::shared_ptr<WakeUp> wakeUp, WaveBlockDone onBlockDone,
                                WatchTimes times)
    : wakeUp_(std::move(wakeUp)), onBlockDone_(std::move(onBlockDone)), times_(times) {}

void BlockNotifier::Channel::Signal() {
    pending_.store(true, std::memory_order_release);
    wakeUp_->Raise();
}

void BlockNotifier::Channel::Lose(WaveResult why) {
    WaveResult none = kWaveSuccess;
    if (loss_.compare_exchange_strong(none, why)) Signal();
}

void BlockNotifier::Channel::Watch() {
    watched_.store(true, std::memory_order_release);
    wakeUp_->Raise();
}

void BlockNotifier::Channel::Close() {
    open_ = false;
    watched_.store(false, std::memory_order_release);
}

void BlockNotifier::Channel::Deliver() {
    if (open_ && pending_.exchange(false, std::memory_order_acq_rel) && onBlockDone_)
        onBlockDone_();
}

// Counts its own steps instead of the time, of which much may pass while the program is stopped.
void BlockNotifier::Channel::Step() {
    const unsigned beats = beats_.load(std::memory_order_relaxed);
    const bool quiet = std::exchange(seenBeats_, beats) == beats;
    if (steps_ < times_.startSteps) {
        ++steps_;
        return;
    }
    quietSteps_ = quiet ? quietSteps_ + 1 : 0;
    if (quietSteps_ >= times_.quietSteps) Lose(kWaveNoAnswer);
}

BlockNotifier::BlockNotifier(PostToUi post, WatchTimes times)
    : post_(std::move(post)), times_(times) {
    thread_ = std::thread([this] { PostUntilStopped(); });
}

BlockNotifier::~BlockNotifier() {
    stopping_ = true;
    wakeUp_->Raise();
    thread_.join();
}

std::shared_ptr<BlockNotifier::Channel> BlockNotifier::OpenChannel(WaveBlockDone onBlockDone) {
    auto channel = std::make_shared<Channel>(wakeUp_, std::move(onBlockDone), times_);
    const std::lock_guard lock(deliveries_->mutex);
    std::erase_if(deliveries_->channels, [](const auto& other) { return other.expired(); });
    deliveries_->channels.push_back(channel);
    return channel;
}

void BlockNotifier::PostUntilStopped() {
    Clock::time_point nextStep = Clock::now() + times_.step;
    bool watching = false;
    while (true) {
        bool raised = true;
        if (watching)
            raised = wakeUp_->WaitUntil(nextStep);
        else
            wakeUp_->Wait();
        if (stopping_) return;
        if (raised) PostDelivery();
        if (watching && Clock::now() < nextStep) continue;
        watching = Step();
        nextStep = Clock::now() + times_.step;
    }
}

void BlockNotifier::PostDelivery() {
    // One delivery serves every signal that comes before it runs.
    if (!deliveries_->posted.exchange(true))
        post_([deliveries = deliveries_] { deliveries->Run(); });
}

bool BlockNotifier::Step() {
    bool watching = false;
    for (const auto& channel : deliveries_->Alive()) {
        if (!channel->IsWatched()) continue;
        channel->Step();
        watching = true;
    }
    return watching;
}

std::vector<std::shared_ptr<BlockNotifier::Channel>> BlockNotifier::Deliveries::Alive() {
    std::vector<std::shared_ptr<Channel>> alive;
    const std::lock_guard lock(mutex);
    for (const auto& weak : channels) {
        if (auto channel = weak.lock()) alive.push_back(std::move(channel));
    }
    return alive;
}

void BlockNotifier::Deliveries::Run() {
    // Before the channels are looked at: a signal from now on posts anew.
    posted = false;
    for (const auto& channel : Alive()) channel->Deliver();
}

}  // namespace sonavel
