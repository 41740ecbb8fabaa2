#include "platform/portaudio/portaudio_wave_out.h"

#include <algorithm>
#include <utility>

namespace sonavel {
namespace {

// What a device reports beyond it is not a latency.
constexpr double kGreatestLatencySeconds = 2.0;

// How long to wait until what is handed over now has been heard. A sound server behind the device
// can lag as much again as the device reports, as seen on a busy machine.
std::uint64_t LatencyFrames(const PaStreamCallbackTimeInfo& time, std::uint32_t rate) {
    const double seconds = 2 * (time.outputBufferDacTime - time.currentTime);
    // Not a number compares false and counts as none.
    if (!(seconds > 0.0)) return 0;
    return static_cast<std::uint64_t>(std::min(seconds, kGreatestLatencySeconds) * rate);
}

}  // namespace

PortAudioWaveOut::~PortAudioWaveOut() {
    PortAudioWaveOut::Close();
}

int PortAudioWaveOut::Render(const void*, void* out, unsigned long frames,
                             const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                             void* self) {
    auto& device = *static_cast<PortAudioWaveOut*>(self);
    if (flags & paOutputUnderflow)
        device.session_->Underflows().fetch_add(1, std::memory_order_relaxed);
    device.feed_->Render({static_cast<std::uint8_t*>(out), frames * device.format_.BlockAlign()},
                         LatencyFrames(*time, device.format_.samplesPerSecond));
    return paContinue;
}

// A stream that ended by itself shows as an error of the next Restart, which this brings about.
void PortAudioWaveOut::Finished(void* self) {
    static_cast<PortAudioWaveOut*>(self)->channel_->Signal();
}

WaveResult PortAudioWaveOut::Open(int deviceId, const WaveFormat& format,
                                  WaveBlockDone onBlockDone) {
    if (stream_) return kWaveAllocated;
    const auto settings = session_->Settings(deviceId, format, StreamDirection::kOutput);
    if (settings.result != kWaveSuccess) return settings.result;
    format_ = format;
    channel_ = session_->Notifier().OpenChannel(std::move(onBlockDone));
    feed_.emplace(format, *channel_, session_->Underflows());
    const PaError error =
        Pa_OpenStream(&stream_, nullptr, &settings.parameters, format.samplesPerSecond,
                      paFramesPerBufferUnspecified, paClipOff | paDitherOff, Render, this);
    if (error != paNoError) {
        stream_ = nullptr;
        return ToWaveResult(error);
    }
    Pa_SetStreamFinishedCallback(stream_, Finished);
    return kWaveSuccess;
}

WaveResult PortAudioWaveOut::Write(WaveBlock& block) {
    return Queue(block);
}

WaveResult PortAudioWaveOut::Pause() {
    if (stream_) feed_->SetPaused(true);
    return IfOpen();
}

WaveResult PortAudioWaveOut::Restart() {
    if (!stream_) return kWaveInvalidHandle;
    feed_->SetPaused(false);
    return EnsureStarted(stream_);
}

WaveResult PortAudioWaveOut::Reset() {
    if (!stream_) return kWaveInvalidHandle;
    AbortStream(stream_);
    feed_->SetPaused(true);
    feed_->ReturnAll();
    return kWaveSuccess;
}

}  // namespace sonavel
