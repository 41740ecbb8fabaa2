// Carries "a block is done" and "the device is lost" from the threads of the sound library to the
// user-interface thread: they only raise a semaphore, and a thread of the notifier's own posts the
// delivery. That thread also watches whether the devices still call back.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/wake_up.h"
#include "platform/wave_device.h"

namespace sonavel {

// Hands a function to the event loop of the user-interface thread. Called on another thread.
using PostToUi = std::function<void(std::function<void()>)>;

// When a device that does not call back counts as lost.
struct WatchTimes {
    std::chrono::milliseconds step{250};
    int quietSteps = 8;
    // A device that has just been started may take its time: an idle one wakes up first.
    int startSteps = 8;
};

class BlockNotifier {
  public:
    // One open device's way to its owner.
    class Channel {
      public:
        Channel(std::shared_ptr<WakeUp> wakeUp, WaveBlockDone onBlockDone, WatchTimes times);

        // --- In an audio callback, or anywhere ---
        // Several signals may arrive as one call.
        void Signal();
        void Beat() { beats_.fetch_add(1, std::memory_order_relaxed); }
        // The first loss stays.
        void Lose(WaveResult why);
        WaveResult Loss() const { return loss_.load(std::memory_order_acquire); }

        // --- On the user-interface thread ---
        // From now on beats must come, or the device is lost.
        void Watch();
        // Nothing is delivered any more, nor are beats expected.
        void Close();

      private:
        friend class BlockNotifier;
        void Deliver();
        bool IsWatched() const { return watched_.load(std::memory_order_acquire); }
        void Step();

        std::shared_ptr<WakeUp> wakeUp_;
        WaveBlockDone onBlockDone_;
        const WatchTimes times_;
        std::atomic<bool> pending_{false};
        std::atomic<WaveResult> loss_{kWaveSuccess};
        std::atomic<unsigned> beats_{0};
        std::atomic<bool> watched_{false};
        bool open_ = true;  // of the user-interface thread
        // Of the notifier's thread.
        unsigned seenBeats_ = 0;
        int steps_ = 0;
        int quietSteps_ = 0;
    };

    explicit BlockNotifier(PostToUi post, WatchTimes times = {});
    ~BlockNotifier();
    BlockNotifier(const BlockNotifier&) = delete;
    BlockNotifier& operator=(const BlockNotifier&) = delete;

    // On the user-interface thread.
    std::shared_ptr<Channel> OpenChannel(WaveBlockDone onBlockDone);

  private:
    // Outlives the notifier in a delivery that is still waiting in the event loop.
    struct Deliveries {
        std::atomic<bool> posted{false};
        std::mutex mutex;  // of the channels
        std::vector<std::weak_ptr<Channel>> channels;

        std::vector<std::shared_ptr<Channel>> Alive();
        void Run();
    };

    void PostUntilStopped();
    void PostDelivery();
    // Steps on all watched channels. False when none is watched.
    bool Step();

    PostToUi post_;
    const WatchTimes times_;
    std::shared_ptr<Deliveries> deliveries_ = std::make_shared<Deliveries>();
    std::shared_ptr<WakeUp> wakeUp_ = std::make_shared<WakeUp>();
    std::atomic<bool> stopping_{false};
    std::thread thread_;
};

}  // namespace sonavel
