#include "platform/portaudio/portaudio_wave_in.h"

#include <utility>

namespace sonavel {

PortAudioWaveIn::~PortAudioWaveIn() {
    PortAudioWaveIn::Close();
}

int PortAudioWaveIn::Capture(const void* in, void*, unsigned long frames,
                             const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags flags,
                             void* userData) {
    auto& stream = *static_cast<Stream*>(static_cast<PortAudioStream*>(userData));
    stream.channel->Beat();
    const CallbackGate::Visit visit(stream.gate);
    if (!visit) return paContinue;
    if (flags & paInputOverflow) stream.feed.NoteGap();
    if (in)
        stream.feed.Capture(
            {static_cast<const std::uint8_t*>(in), frames * stream.format.BlockAlign()});
    return paContinue;
}

WaveResult PortAudioWaveIn::Open(int deviceId, const WaveFormat& format,
                                 WaveBlockDone onBlockDone) {
    return OpenStream({deviceId, format, StreamDirection::kInput, Capture, OnStreamFinished},
                      std::move(onBlockDone));
}

WaveResult PortAudioWaveIn::Add(WaveBlock& block) {
    return Queue(block);
}

WaveResult PortAudioWaveIn::Start() {
    return Run();
}

WaveResult PortAudioWaveIn::Stop() {
    if (!stream_) return kWaveInvalidHandle;
    stream_->gate.Close();
    stream_->feed.ReturnCurrent();
    return kWaveSuccess;
}

}  // namespace sonavel
