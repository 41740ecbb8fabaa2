#include "platform/portaudio/portaudio_frame_out.h"

#include <algorithm>
#include <utility>

#include "platform/portaudio/portaudio_wave_device.h"

namespace sonavel {
namespace {

std::uint32_t FramesUntilHeard(const PaStreamCallbackTimeInfo& time, std::uint32_t rate) {
    return static_cast<std::uint32_t>(SecondsUntilHeard(time) * rate);
}

}  // namespace

PortAudioFrameOut::~PortAudioFrameOut() {
    PortAudioFrameOut::Close();
}

int PortAudioFrameOut::Render(const void*, void* out, unsigned long frames,
                              const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags,
                              void* userData) {
    auto& stream = *static_cast<Stream*>(static_cast<PortAudioStream*>(userData));
    const std::span<float> pairs(static_cast<float*>(out), 2 * frames);
    stream.channel->Beat();
    const CallbackGate::Visit visit(stream.gate);
    if (visit)
        stream.source.Pull(pairs, FramesUntilHeard(*time, stream.framesPerSecond));
    else
        std::ranges::fill(pairs, 0.0f);
    return paContinue;
}

WaveResult PortAudioFrameOut::Open(int deviceId, std::uint32_t framesPerSecond, FrameSupply& source,
                                   std::function<void()> onLost) {
    if (stream_) return kWaveAllocated;
    const auto stream = std::make_shared<Stream>(
        session_->Notifier().OpenChannel(std::move(onLost)), source, framesPerSecond);
    const WaveFormat format{2, framesPerSecond, 32};
    const WaveResult opened =
        session_->Open(stream, {deviceId, format, StreamDirection::kOutput, Render,
                                OnStreamFinished, StreamLatency::kShort});
    if (opened != kWaveSuccess) {
        stream->channel->Close();
        return opened;
    }
    stream_ = stream;
    const WaveResult running = Run();
    if (running != kWaveSuccess) Close();
    return running;
}

WaveResult PortAudioFrameOut::Run() {
    stream_->gate.Open();
    const WaveResult result = session_->Start(stream_);
    hangs_ = result == kWaveNoAnswer;
    if (result == kWaveSuccess) stream_->channel->Watch();
    return result;
}

WaveResult PortAudioFrameOut::Close() {
    if (!stream_) return kWaveInvalidHandle;
    stream_->gate.Close();
    stream_->channel->Close();
    const std::shared_ptr<Stream> stream = std::exchange(stream_, nullptr);
    if (std::exchange(hangs_, false)) return kWaveSuccess;
    if (stream->channel->Loss() == kWaveSuccess) return session_->Close(stream);
    session_->CloseLost(stream);
    return kWaveSuccess;
}

}  // namespace sonavel
