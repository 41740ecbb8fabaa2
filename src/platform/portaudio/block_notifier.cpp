#include "platform/portaudio/block_notifier.h"

#include <utility>

namespace sonavel {

BlockNotifier::Channel::Channel(sem_t& wakeUp, WaveBlockDone onBlockDone)
    : wakeUp_(wakeUp), onBlockDone_(std::move(onBlockDone)) {}

void BlockNotifier::Channel::Signal() {
    pending_.store(true, std::memory_order_release);
    sem_post(&wakeUp_);
}

void BlockNotifier::Channel::Deliver() {
    if (open_ && pending_.exchange(false, std::memory_order_acq_rel) && onBlockDone_)
        onBlockDone_();
}

BlockNotifier::BlockNotifier(PostToUi post) : post_(std::move(post)) {
    sem_init(&wakeUp_, 0, 0);
    thread_ = std::thread([this] { PostUntilStopped(); });
}

BlockNotifier::~BlockNotifier() {
    stopping_ = true;
    sem_post(&wakeUp_);
    thread_.join();
    sem_destroy(&wakeUp_);
}

std::shared_ptr<BlockNotifier::Channel> BlockNotifier::OpenChannel(WaveBlockDone onBlockDone) {
    auto channel = std::make_shared<Channel>(wakeUp_, std::move(onBlockDone));
    std::erase_if(deliveries_->channels, [](const auto& other) { return other.expired(); });
    deliveries_->channels.push_back(channel);
    return channel;
}

void BlockNotifier::PostUntilStopped() {
    while (true) {
        while (sem_wait(&wakeUp_) != 0) {
        }
        while (sem_trywait(&wakeUp_) == 0) {
        }
        if (stopping_) return;
        // One delivery serves every signal that comes before it runs.
        if (!deliveries_->posted.exchange(true))
            post_([deliveries = deliveries_] { deliveries->Run(); });
    }
}

void BlockNotifier::Deliveries::Run() {
    // Before the channels are looked at: a signal from now on posts anew.
    posted = false;
    const auto current = channels;
    for (const auto& weak : current) {
        if (const auto channel = weak.lock()) channel->Deliver();
    }
}

}  // namespace sonavel
