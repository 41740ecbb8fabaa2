// Who makes the calls of the sound library: one thread after the other, so that a call that hangs
// holds up no more than it must. The user-interface thread waits for an answer only so long.
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "platform/portaudio/device_thread.h"

namespace sonavel {

class DeviceCalls {
  public:
    explicit DeviceCalls(std::chrono::milliseconds limit) : limit_(limit) {}

    // What a call may hold up while it hangs: the whole library, whose other calls then go without
    // an answer at once, or one stream, whose thread is left to itself.
    enum class Scope { kLibrary, kStream };
    // Runs the job and waits for it. False when there is no answer in time; `afterwards` then
    // follows behind it, and both must own all that they touch.
    bool Run(Scope scope, DeviceThread::Job job, DeviceThread::Job afterwards);
    // Runs the job on a thread of its own and does not wait.
    void Leave(DeviceThread::Job job);
    // Whether calls are under way that nobody waits for.
    bool AnyLeft() const;

  private:
    void SetAside(std::shared_ptr<DeviceThread> thread);

    std::chrono::milliseconds limit_;
    std::shared_ptr<DeviceThread> thread_;
    std::shared_ptr<DeviceThread> hungLibrary_;
    std::vector<std::shared_ptr<DeviceThread>> aside_;
};

}  // namespace sonavel
