#include "platform/portaudio/device_thread.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace sonavel {

// Outlives the object in a thread that hangs.
struct DeviceThread::Queue {
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Job> jobs;
    std::uint64_t posted = 0;
    std::uint64_t done = 0;
    bool closed = false;

    std::uint64_t Push(Job job) {
        const std::lock_guard lock(mutex);
        jobs.push_back(std::move(job));
        changed.notify_all();
        return ++posted;
    }

    void Work() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return closed || !jobs.empty(); });
            if (jobs.empty()) return;
            Job job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            job();
            // What it owns goes before anyone hears that it is done.
            job = nullptr;
            lock.lock();
            ++done;
            changed.notify_all();
        }
    }
};

DeviceThread::DeviceThread() : queue_(std::make_shared<Queue>()) {
    try {
        std::thread([queue = queue_] { queue->Work(); }).detach();
    } catch (const std::system_error&) {
        // Every job then goes without an answer, as on a thread that hangs.
    }
}

DeviceThread::~DeviceThread() {
    const std::lock_guard lock(queue_->mutex);
    queue_->closed = true;
    queue_->changed.notify_all();
}

bool DeviceThread::Run(Job job, std::chrono::milliseconds limit) {
    const std::uint64_t number = queue_->Push(std::move(job));
    std::unique_lock lock(queue_->mutex);
    return queue_->changed.wait_for(lock, limit, [&] { return queue_->done >= number; });
}

void DeviceThread::Post(Job job) {
    queue_->Push(std::move(job));
}

bool DeviceThread::IsBusy() const {
    const std::lock_guard lock(queue_->mutex);
    return queue_->done < queue_->posted;
}

}  // namespace sonavel
