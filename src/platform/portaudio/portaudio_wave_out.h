// An output device on a PortAudio stream.
#pragma once

#include "platform/portaudio/output_feed.h"
#include "platform/portaudio/portaudio_wave_device.h"

namespace sonavel {

class PortAudioWaveOut : public PortAudioWaveDevice<WaveOut, OutputFeed> {
  public:
    using PortAudioWaveDevice::PortAudioWaveDevice;
    ~PortAudioWaveOut() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Write(WaveBlock& block) override;
    // The stream goes on with silence, so that a pause takes hold at the next buffer.
    WaveResult Pause() override;
    WaveResult Restart() override;

  private:
    static int Render(const void* in, void* out, unsigned long frames,
                      const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                      void* stream);
};

}  // namespace sonavel
