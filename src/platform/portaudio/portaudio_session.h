// The PortAudio library while it is in use, its error codes and its devices in the engine's terms.
#pragma once

#include <portaudio.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/portaudio/block_notifier.h"
#include "platform/wave_device.h"

namespace sonavel {

// Each PortAudio error as the nearest of the codes 1 to 20.
WaveResult ToWaveResult(PaError error);

enum class StreamDirection { kInput, kOutput };

class PortAudioSession {
  public:
    explicit PortAudioSession(PostToUi post);
    ~PortAudioSession();
    PortAudioSession(const PortAudioSession&) = delete;
    PortAudioSession& operator=(const PortAudioSession&) = delete;

    // The library is started by the first call of these two, because that takes its time. All of it
    // is called on the user-interface thread.
    std::vector<WaveDeviceInfo> Devices(StreamDirection direction);
    struct StreamSettings {
        WaveResult result = kWaveSuccess;
        PaStreamParameters parameters{};
    };
    StreamSettings Settings(int deviceId, const WaveFormat& format, StreamDirection direction);

    BlockNotifier& Notifier() { return notifier_; }
    std::atomic<std::uint64_t>& Underflows() { return underflows_; }
    std::atomic<std::uint64_t>& Overflows() { return overflows_; }

  private:
    PaError Start();

    BlockNotifier notifier_;
    std::atomic<std::uint64_t> underflows_{0};
    std::atomic<std::uint64_t> overflows_{0};
    bool started_ = false;
};

// Stops a stream that has been started, dropping what is in flight; no callback runs afterwards.
void AbortStream(PaStream* stream);
// Starts a stream that does not run, also one that has ended by itself.
WaveResult EnsureStarted(PaStream* stream);

}  // namespace sonavel
