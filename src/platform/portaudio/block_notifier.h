// Carries "a block is done" from the audio callback to the user-interface thread: the callback only
// raises a semaphore, and a thread of the notifier's own posts the delivery.
#pragma once

#include <semaphore.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "platform/wave_device.h"

namespace sonavel {

// Hands a function to the event loop of the user-interface thread. Called on another thread.
using PostToUi = std::function<void(std::function<void()>)>;

class BlockNotifier {
  public:
    // One open device's way to its owner.
    class Channel {
      public:
        Channel(sem_t& wakeUp, WaveBlockDone onBlockDone);

        // Safe in an audio callback. Several signals may arrive as one call.
        void Signal();
        // On the user-interface thread; nothing is delivered from now on.
        void Close() { open_ = false; }

      private:
        friend class BlockNotifier;
        void Deliver();

        sem_t& wakeUp_;
        WaveBlockDone onBlockDone_;
        std::atomic<bool> pending_{false};
        bool open_ = true;  // of the user-interface thread
    };

    explicit BlockNotifier(PostToUi post);
    ~BlockNotifier();
    BlockNotifier(const BlockNotifier&) = delete;
    BlockNotifier& operator=(const BlockNotifier&) = delete;

    // On the user-interface thread, as is everything but Signal.
    std::shared_ptr<Channel> OpenChannel(WaveBlockDone onBlockDone);

  private:
    // Outlives the notifier in a delivery that is still waiting in the event loop.
    struct Deliveries {
        std::atomic<bool> posted{false};
        std::vector<std::weak_ptr<Channel>> channels;  // of the user-interface thread

        void Run();
    };

    void PostUntilStopped();

    PostToUi post_;
    std::shared_ptr<Deliveries> deliveries_ = std::make_shared<Deliveries>();
    sem_t wakeUp_;
    std::atomic<bool> stopping_{false};
    std::thread thread_;
};

}  // namespace sonavel
