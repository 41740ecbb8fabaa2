// What PortAudio outputs and inputs share: a stream, and the feed that its callback works on.
#pragma once

#include <memory>
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

    WaveResult Loss() const override { return stream_ ? stream_->channel->Loss() : kWaveSuccess; }

    // The stream goes on with silence, or into nothing, until the device is closed.
    WaveResult Reset() override {
        if (!stream_) return kWaveInvalidHandle;
        stream_->gate.Close();
        stream_->feed.ReturnAll();
        return kWaveSuccess;
    }

    WaveResult Close() override {
        if (!stream_) return kWaveInvalidHandle;
        Reset();
        stream_->channel->Close();
        const std::shared_ptr<Stream> stream = std::exchange(stream_, nullptr);
        const bool left = std::exchange(state_, State::kOpen) == State::kLeft;
        if (left) return kWaveSuccess;
        if (stream->channel->Loss() == kWaveSuccess) return session_->Close(stream);
        session_->CloseLost(stream);
        return kWaveSuccess;
    }

  protected:
    using Stream = FedStream<Feed>;

    WaveResult IfOpen() const { return stream_ ? kWaveSuccess : kWaveInvalidHandle; }

    WaveResult OpenStream(const StreamRequest& request, WaveBlockDone onBlockDone) {
        if (stream_) return kWaveAllocated;
        const auto stream = std::make_shared<Stream>(
            session_->Notifier().OpenChannel(std::move(onBlockDone)), request.format);
        const WaveResult result = session_->Open(stream, request);
        if (result == kWaveSuccess)
            stream_ = stream;
        else
            stream->channel->Close();
        return result;
    }

    WaveResult Queue(WaveBlock& block) {
        if (!stream_) return kWaveInvalidHandle;
        return stream_->feed.Push(block) ? kWaveSuccess : kWaveNoMemory;
    }

    // Lets the callback at the blocks. A stream is started once: one that has finished by itself is
    // lost, and the library would never come back from starting it again.
    WaveResult Run() {
        if (!stream_) return kWaveInvalidHandle;
        stream_->gate.Open();
        if (state_ != State::kOpen) return Loss();
        const WaveResult result = session_->Start(stream_);
        state_ = result == kWaveNoAnswer ? State::kLeft : State::kStarted;
        if (result == kWaveNoAnswer) stream_->channel->Lose(result);
        stream_->channel->Watch();
        return result;
    }

    std::shared_ptr<PortAudioSession> session_;
    std::shared_ptr<Stream> stream_;

  private:
    // kLeft: a call of the library hangs, and the stream with it.
    enum class State { kOpen, kStarted, kLeft };
    State state_ = State::kOpen;
};

// The library's callbacks, which get the stream as their user data.
inline void OnStreamFinished(void* stream) {
    auto& finished = *static_cast<PortAudioStream*>(stream);
    if (finished.running.exchange(false)) finished.channel->Lose(kWaveNoDriver);
}

}  // namespace sonavel
