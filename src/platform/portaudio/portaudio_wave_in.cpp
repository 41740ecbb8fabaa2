#include "platform/portaudio/portaudio_wave_in.h"

#include <utility>

namespace sonavel {

PortAudioWaveIn::~PortAudioWaveIn() {
    PortAudioWaveIn::Close();
}

int PortAudioWaveIn::Capture(const void* in, void*, unsigned long frames,
                             const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags flags,
                             void* self) {
    auto& device = *static_cast<PortAudioWaveIn*>(self);
    if (flags & paInputOverflow)
        device.session_->Overflows().fetch_add(1, std::memory_order_relaxed);
    if (in)
        device.feed_->Capture(
            {static_cast<const std::uint8_t*>(in), frames * device.format_.BlockAlign()});
    return paContinue;
}

WaveResult PortAudioWaveIn::Open(int deviceId, const WaveFormat& format,
                                 WaveBlockDone onBlockDone) {
    if (stream_) return kWaveAllocated;
    const auto settings = session_->Settings(deviceId, format, StreamDirection::kInput);
    if (settings.result != kWaveSuccess) return settings.result;
    format_ = format;
    channel_ = session_->Notifier().OpenChannel(std::move(onBlockDone));
    feed_.emplace(*channel_, session_->Overflows());
    const PaError error =
        Pa_OpenStream(&stream_, &settings.parameters, nullptr, format.samplesPerSecond,
                      paFramesPerBufferUnspecified, paClipOff | paDitherOff, Capture, this);
    if (error != paNoError) stream_ = nullptr;
    return ToWaveResult(error);
}

WaveResult PortAudioWaveIn::Add(WaveBlock& block) {
    return Queue(block);
}

WaveResult PortAudioWaveIn::Start() {
    return stream_ ? EnsureStarted(stream_) : kWaveInvalidHandle;
}

WaveResult PortAudioWaveIn::Stop() {
    if (!stream_) return kWaveInvalidHandle;
    AbortStream(stream_);
    feed_->ReturnCurrent();
    return kWaveSuccess;
}

WaveResult PortAudioWaveIn::Reset() {
    if (!stream_) return kWaveInvalidHandle;
    AbortStream(stream_);
    feed_->ReturnAll();
    return kWaveSuccess;
}

}  // namespace sonavel
