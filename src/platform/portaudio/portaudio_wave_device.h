// What PortAudio outputs and inputs share: a stream, and the feed that its callback works on.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/portaudio/portaudio_session.h"

namespace sonavel {

// `Device`: WaveOut or WaveIn. `Feed`: its OutputFeed or InputFeed, there while a stream is.
template <class Device, class Feed>
class PortAudioWaveDevice : public Device {
  public:
    explicit PortAudioWaveDevice(std::shared_ptr<PortAudioSession> session)
        : session_(std::move(session)) {}
    PortAudioWaveDevice(const PortAudioWaveDevice&) = delete;
    PortAudioWaveDevice& operator=(const PortAudioWaveDevice&) = delete;

    WaveResult Prepare(WaveBlock&) override { return IfOpen(); }
    WaveResult Unprepare(WaveBlock&) override { return IfOpen(); }

    WaveResult Close() override {
        if (!stream_) return kWaveInvalidHandle;
        this->Reset();
        const PaError error = Pa_CloseStream(std::exchange(stream_, nullptr));
        channel_->Close();
        return ToWaveResult(error);
    }

  protected:
    WaveResult IfOpen() const { return stream_ ? kWaveSuccess : kWaveInvalidHandle; }

    WaveResult Queue(WaveBlock& block) {
        if (!stream_) return kWaveInvalidHandle;
        return feed_->Push(block) ? kWaveSuccess : kWaveNoMemory;
    }

    std::shared_ptr<PortAudioSession> session_;
    std::shared_ptr<BlockNotifier::Channel> channel_;
    std::optional<Feed> feed_;
    WaveFormat format_;
    PaStream* stream_ = nullptr;
};

}  // namespace sonavel
