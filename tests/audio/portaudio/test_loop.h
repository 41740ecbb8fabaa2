// An event loop of one thread, as a user interface has it, in the hands of a test.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace sonavel {

class TestLoop {
  public:
    void Post(std::function<void()> task) {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        arrived_.notify_one();
    }
    // Waits for one task and runs it; false when none comes.
    bool RunOne() {
        std::unique_lock lock(mutex_);
        if (!arrived_.wait_for(lock, std::chrono::seconds(5), [&] { return !tasks_.empty(); }))
            return false;
        const std::function<void()> task = std::move(tasks_.front());
        tasks_.erase(tasks_.begin());
        lock.unlock();
        task();
        return true;
    }

  private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::vector<std::function<void()>> tasks_;
};

}  // namespace sonavel
