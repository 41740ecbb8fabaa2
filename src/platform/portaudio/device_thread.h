// A thread for the calls of the sound library that may block, some of them for ever. Who asks waits
// for an answer only so long; a thread that hangs is left to itself.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace sonavel {

class DeviceThread {
  public:
    using Job = std::function<void()>;

    DeviceThread();
    // Waits for nothing; the thread ends by itself behind its last job.
    ~DeviceThread();
    DeviceThread(const DeviceThread&) = delete;
    DeviceThread& operator=(const DeviceThread&) = delete;

    // Runs a job behind those that are there already and waits for it. False when it has not ended
    // in time: it goes on alone and must own all that it touches.
    bool Run(Job job, std::chrono::milliseconds limit);
    // Likewise without waiting.
    void Post(Job job);
    // Whether any job has not ended yet.
    bool IsBusy() const;

  private:
    struct Queue;
    std::shared_ptr<Queue> queue_;
};

}  // namespace sonavel
