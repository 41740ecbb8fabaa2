// An output device on a PortAudio stream.
#pragma once

#include <memory>
#include <optional>

#include "platform/portaudio/output_feed.h"
#include "platform/portaudio/portaudio_session.h"

namespace sonavel {

class PortAudioWaveOut : public WaveOut {
  public:
    explicit PortAudioWaveOut(std::shared_ptr<PortAudioSession> session);
    ~PortAudioWaveOut() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Prepare(WaveBlock& block) override;
    WaveResult Write(WaveBlock& block) override;
    // The stream goes on with silence, so that a pause takes hold at the next buffer.
    WaveResult Pause() override;
    WaveResult Restart() override;
    WaveResult Reset() override;
    WaveResult Unprepare(WaveBlock& block) override;
    WaveResult Close() override;

  private:
    static int Render(const void* in, void* out, unsigned long frames,
                      const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                      void* self);
    static void Finished(void* self);
    WaveResult IfOpen() const { return stream_ ? kWaveSuccess : kWaveInvalidHandle; }

    std::shared_ptr<PortAudioSession> session_;
    std::shared_ptr<BlockNotifier::Channel> channel_;
    std::optional<OutputFeed> feed_;
    WaveFormat format_;
    PaStream* stream_ = nullptr;
};

}  // namespace sonavel
