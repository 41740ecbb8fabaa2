// A semaphore that a thread waits for, also for some time only, and that an audio callback may
// raise: that takes no lock.
#pragma once

#include <semaphore.h>

#include <chrono>
#include <ctime>

namespace sonavel {

class WakeUp {
  public:
    WakeUp() { sem_init(&semaphore_, 0, 0); }
    ~WakeUp() { sem_destroy(&semaphore_); }
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    void Raise() { sem_post(&semaphore_); }

    // Takes up all that was raised so far.
    void Wait() {
        while (sem_wait(&semaphore_) != 0) {
        }
        TakeRest();
    }
    // False when nothing was raised until then.
    bool WaitUntil(std::chrono::steady_clock::time_point time) {
        const auto sinceStart = time.time_since_epoch();
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(sinceStart);
        timespec limit{};
        limit.tv_sec = static_cast<std::time_t>(seconds.count());
        limit.tv_nsec = static_cast<long>(std::chrono::nanoseconds(sinceStart - seconds).count());
        if (sem_clockwait(&semaphore_, CLOCK_MONOTONIC, &limit) != 0) return false;
        TakeRest();
        return true;
    }

  private:
    void TakeRest() {
        while (sem_trywait(&semaphore_) == 0) {
        }
    }

    sem_t semaphore_;
};

}  // namespace sonavel
