#include "platform/portaudio/device_calls.h"

#include <algorithm>
#include <utility>

namespace sonavel {

bool DeviceCalls::Run(Scope scope, DeviceThread::Job job, DeviceThread::Job afterwards) {
    const bool wholeLibrary = scope == Scope::kLibrary;
    if (wholeLibrary && hungLibrary_ && hungLibrary_->IsBusy()) return false;
    if (!thread_) thread_ = std::make_shared<DeviceThread>();
    if (thread_->Run(std::move(job), limit_)) return true;
    if (afterwards) thread_->Post(std::move(afterwards));
    if (wholeLibrary) hungLibrary_ = thread_;
    SetAside(std::exchange(thread_, nullptr));
    return false;
}

void DeviceCalls::Leave(DeviceThread::Job job) {
    auto thread = std::make_shared<DeviceThread>();
    thread->Post(std::move(job));
    SetAside(std::move(thread));
}

bool DeviceCalls::AnyLeft() const {
    return std::ranges::any_of(aside_, [](const auto& thread) { return thread->IsBusy(); });
}

void DeviceCalls::SetAside(std::shared_ptr<DeviceThread> thread) {
    std::erase_if(aside_, [](const auto& other) { return !other->IsBusy(); });
    aside_.push_back(std::move(thread));
}

}  // namespace sonavel
