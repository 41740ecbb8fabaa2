// The sound library as the user-interface thread sees it while it is in use: no call here blocks
// for longer than two seconds. What gives no answer counts as lost.
#pragma once

#include <chrono>
#include <memory>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/device_calls.h"
#include "platform/portaudio/portaudio_library.h"

namespace sonavel {

struct DeviceTimes {
    std::chrono::milliseconds answer{2000};
    WatchTimes watch;
};

class PortAudioSession {
  public:
    explicit PortAudioSession(PostToUi post, DeviceTimes times = {});
    ~PortAudioSession();
    PortAudioSession(const PortAudioSession&) = delete;
    PortAudioSession& operator=(const PortAudioSession&) = delete;

    // The ones known last when there is no answer.
    WaveDeviceList Devices(StreamDirection direction);
    void ListAnew();

    // Each returns kWaveNoAnswer in time; the stream is then closed as soon as that is possible,
    // and must not be used any more.
    WaveResult Open(const std::shared_ptr<PortAudioStream>& stream, const StreamRequest& request);
    WaveResult Start(const std::shared_ptr<PortAudioStream>& stream);
    WaveResult Close(const std::shared_ptr<PortAudioStream>& stream);
    // Without waiting, for a stream that is lost.
    void CloseLost(const std::shared_ptr<PortAudioStream>& stream);

    // Leaves the library, unless streams are open.
    void End();

    BlockNotifier& Notifier() { return notifier_; }
    // Whether calls are under way that nobody waits for.
    bool HasCallsLeft() const { return calls_.AnyLeft(); }

  private:
    using Scope = DeviceCalls::Scope;
    WaveResult Ask(Scope scope, std::function<WaveResult()> call,
                   DeviceThread::Job afterwards = nullptr);
    DeviceThread::Job ClosingOf(const std::shared_ptr<PortAudioStream>& stream) const;

    std::shared_ptr<PortAudioLibrary> library_ = std::make_shared<PortAudioLibrary>();
    DeviceCalls calls_;
    BlockNotifier notifier_;
    WaveDeviceList known_[2];
};

}  // namespace sonavel
