// An output device that asks for its frames, on a PortAudio stream of short latency.
#pragma once

#include <memory>

#include "platform/frame_out.h"
#include "platform/portaudio/portaudio_session.h"

namespace sonavel {

class PortAudioFrameOut : public FrameOut {
  public:
    explicit PortAudioFrameOut(std::shared_ptr<PortAudioSession> session)
        : session_(std::move(session)) {}
    ~PortAudioFrameOut() override;
    PortAudioFrameOut(const PortAudioFrameOut&) = delete;
    PortAudioFrameOut& operator=(const PortAudioFrameOut&) = delete;

    WaveResult Open(int deviceId, std::uint32_t framesPerSecond, FrameSupply& source,
                    std::function<void()> onLost) override;
    WaveResult Close() override;
    WaveResult Loss() const override { return stream_ ? stream_->channel->Loss() : kWaveSuccess; }

  private:
    struct Stream : PortAudioStream {
        Stream(std::shared_ptr<BlockNotifier::Channel> way, FrameSupply& from, std::uint32_t rate)
            : PortAudioStream(std::move(way)), source(from), framesPerSecond(rate) {}

        FrameSupply& source;  // of the callback while the gate is open
        const std::uint32_t framesPerSecond;
    };

    static int Render(const void* in, void* out, unsigned long frames,
                      const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                      void* stream);
    WaveResult Run();

    std::shared_ptr<PortAudioSession> session_;
    std::shared_ptr<Stream> stream_;
    // A call of the library hangs, and the stream with it.
    bool hangs_ = false;
};

}  // namespace sonavel
