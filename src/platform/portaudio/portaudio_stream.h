// One open stream of the library with what its callbacks work on. The jobs of the device threads
// and the device that opened it own it together, so that a call that comes back late finds it still
// there.
#pragma once

#include <portaudio.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

#include "platform/portaudio/block_notifier.h"
#include "platform/portaudio/callback_gate.h"
#include "platform/wave_device.h"

namespace sonavel {

struct PortAudioStream {
    explicit PortAudioStream(std::shared_ptr<BlockNotifier::Channel> way)
        : channel(std::move(way)) {}
    virtual ~PortAudioStream() = default;
    PortAudioStream(const PortAudioStream&) = delete;
    PortAudioStream& operator=(const PortAudioStream&) = delete;

    const std::shared_ptr<BlockNotifier::Channel> channel;
    CallbackGate gate;
    // Asked to run: a stream that then finishes is lost.
    std::atomic<bool> running{false};
    PaStream* handle = nullptr;  // of the device threads, one after the other
};

// When what a callback hands over is heard, by the device's word. What it says beyond two seconds
// is no latency.
inline double SecondsUntilHeard(const PaStreamCallbackTimeInfo& time) {
    const double seconds = time.outputBufferDacTime - time.currentTime;
    // Not a number compares false and counts as none.
    return seconds > 0.0 ? std::min(seconds, 2.0) : 0.0;
}

// `Feed`: OutputFeed or InputFeed.
template <class Feed>
struct FedStream : PortAudioStream {
    FedStream(std::shared_ptr<BlockNotifier::Channel> way, const WaveFormat& waveFormat)
        : PortAudioStream(std::move(way)), format(waveFormat), feed(waveFormat, *channel) {}

    const WaveFormat format;
    Feed feed;  // of the callback while the gate is open
};

}  // namespace sonavel
