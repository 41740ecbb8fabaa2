// The calls of the PortAudio library, which all may block: they are made on device threads only.
#pragma once

#include <portaudio.h>

#include <mutex>

#include "platform/portaudio/portaudio_stream.h"
#include "platform/wave_device.h"

namespace sonavel {

// Each PortAudio error as the nearest of the codes 1 to 20.
WaveResult ToWaveResult(PaError error);

enum class StreamDirection { kInput, kOutput };

// kShort: what is played is to be heard as soon as an ordinary desktop allows, at the price of a
// click when that is very busy.
enum class StreamLatency { kSafe, kShort };

struct StreamRequest {
    int deviceId = kDefaultWaveDevice;
    WaveFormat format;
    StreamDirection direction = StreamDirection::kOutput;
    PaStreamCallback* callback = nullptr;  // its user data is the stream
    PaStreamFinishedCallback* finished = nullptr;
    StreamLatency latency = StreamLatency::kSafe;
};

class PortAudioLibrary {
  public:
    PortAudioLibrary() = default;
    PortAudioLibrary(const PortAudioLibrary&) = delete;
    PortAudioLibrary& operator=(const PortAudioLibrary&) = delete;

    // The library is started by the first of these calls, because that takes its time.
    WaveDeviceList Devices(StreamDirection direction);
    // The library lists devices only when it starts, and must not end under an open stream.
    void ListAnew();
    // Lists the devices anew when there is none that can be opened, or when one could not be
    // started or was lost since.
    WaveResult Open(PortAudioStream& stream, const StreamRequest& request);
    // Once for each open stream.
    WaveResult Start(PortAudioStream& stream);
    // Stops the stream when it runs, dropping what is in flight, and closes it. Does nothing for a
    // stream that is not open.
    WaveResult Close(PortAudioStream& stream);
    // What is listed may be out of date.
    void DoubtList();
    // Leaves the library, unless a stream is still open.
    void End();

  private:
    PaError EnsureStarted();
    bool Restart();
    WaveResult TryOpen(PortAudioStream& stream, const StreamRequest& request);

    // Of everything that concerns more than one stream, in the library too.
    std::mutex mutex_;
    bool started_ = false;
    bool doubtful_ = false;
    int openStreams_ = 0;
};

}  // namespace sonavel
