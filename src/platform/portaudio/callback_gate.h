// Lets the user-interface thread take away what an audio callback works on, without a lock and also
// while the stream runs.
#pragma once

#include <atomic>
#include <thread>

namespace sonavel {

class CallbackGate {
  public:
    // --- On the user-interface thread ---
    void Open() { open_.store(true); }
    // Afterwards no callback is inside. Waits for one that is, which is a matter of microseconds.
    void Close() {
        open_.store(false);
        while (inside_.load()) std::this_thread::yield();
    }

    // --- In the callback ---
    class Visit {
      public:
        explicit Visit(CallbackGate& gate) : gate_(gate) {
            // In this order, so that either the callback sees a closed gate or who closes it sees
            // the callback.
            gate_.inside_.store(true);
            admitted_ = gate_.open_.load();
        }
        ~Visit() { gate_.inside_.store(false); }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

        explicit operator bool() const { return admitted_; }

      private:
        CallbackGate& gate_;
        bool admitted_ = false;
    };

  private:
    std::atomic<bool> open_{false};
    std::atomic<bool> inside_{false};
};

}  // namespace sonavel
