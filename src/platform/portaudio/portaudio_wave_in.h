// An input device on a PortAudio stream.
#pragma once

#include <memory>
#include <optional>

#include "platform/portaudio/input_feed.h"
#include "platform/portaudio/portaudio_session.h"

namespace sonavel {

class PortAudioWaveIn : public WaveIn {
  public:
    explicit PortAudioWaveIn(std::shared_ptr<PortAudioSession> session);
    ~PortAudioWaveIn() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Prepare(WaveBlock& block) override;
    WaveResult Add(WaveBlock& block) override;
    WaveResult Start() override;
    WaveResult Stop() override;
    WaveResult Reset() override;
    WaveResult Unprepare(WaveBlock& block) override;
    WaveResult Close() override;

  private:
    static int Capture(const void* in, void* out, unsigned long frames,
                       const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                       void* self);
    WaveResult IfOpen() const { return stream_ ? kWaveSuccess : kWaveInvalidHandle; }

    std::shared_ptr<PortAudioSession> session_;
    std::shared_ptr<BlockNotifier::Channel> channel_;
    std::optional<InputFeed> feed_;
    WaveFormat format_;
    PaStream* stream_ = nullptr;
};

}  // namespace sonavel
