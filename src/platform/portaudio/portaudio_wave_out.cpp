#include "platform/portaudio/portaudio_wave_out.h"

#include <algorithm>
#include <span>
#include <utility>

namespace sonavel {
namespace {

// How long to wait until what is handed over now has been heard. A sound server behind the device
// can lag as much again as the device reports, as seen on a busy machine.
std::uint64_t LatencyFrames(const PaStreamCallbackTimeInfo& time, std::uint32_t rate) {
    return static_cast<std::uint64_t>(2 * SecondsUntilHeard(time) * rate);
}

}  // namespace

PortAudioWaveOut::~PortAudioWaveOut() {
    PortAudioWaveOut::Close();
}

int PortAudioWaveOut::Render(const void*, void* out, unsigned long frames,
                             const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags,
                             void* userData) {
    auto& stream = *static_cast<Stream*>(static_cast<PortAudioStream*>(userData));
    const std::span<std::uint8_t> bytes(static_cast<std::uint8_t*>(out),
                                        frames * stream.format.BlockAlign());
    stream.channel->Beat();
    const CallbackGate::Visit visit(stream.gate);
    if (visit)
        stream.feed.Render(bytes, LatencyFrames(*time, stream.format.samplesPerSecond));
    else
        std::ranges::fill(bytes, OutputFeed::Silence(stream.format));
    return paContinue;
}

WaveResult PortAudioWaveOut::Open(int deviceId, const WaveFormat& format,
                                  WaveBlockDone onBlockDone) {
    return OpenStream({deviceId, format, StreamDirection::kOutput, Render, OnStreamFinished},
                      std::move(onBlockDone));
}

WaveResult PortAudioWaveOut::Write(WaveBlock& block) {
    return Queue(block);
}

WaveResult PortAudioWaveOut::Pause() {
    if (stream_) stream_->feed.SetPaused(true);
    return IfOpen();
}

WaveResult PortAudioWaveOut::Restart() {
    if (stream_) stream_->feed.SetPaused(false);
    return Run();
}

}  // namespace sonavel
