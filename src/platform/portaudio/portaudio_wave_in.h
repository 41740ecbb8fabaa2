// An input device on a PortAudio stream.
#pragma once

#include "platform/portaudio/input_feed.h"
#include "platform/portaudio/portaudio_wave_device.h"

namespace sonavel {

class PortAudioWaveIn : public PortAudioWaveDevice<WaveIn, InputFeed> {
  public:
    using PortAudioWaveDevice::PortAudioWaveDevice;
    ~PortAudioWaveIn() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Add(WaveBlock& block) override;
    WaveResult Start() override;
    WaveResult Stop() override;

  private:
    static int Capture(const void* in, void* out, unsigned long frames,
                       const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                       void* stream);
};

}  // namespace sonavel
