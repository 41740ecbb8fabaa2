// An input device without hardware: it hears silence when it is pumped.
#pragma once

#include "platform/headless/headless_wave_device.h"

namespace sonavel {

class HeadlessWaveIn : public HeadlessWaveDevice<WaveIn> {
  public:
    using HeadlessWaveDevice::HeadlessWaveDevice;
    ~HeadlessWaveIn() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Add(WaveBlock& block) override;
    WaveResult Start() override;
    WaveResult Stop() override;
    WaveResult Reset() override;
    WaveResult Close() override;

  protected:
    void Move(WaveBlock& block) override;
};

}  // namespace sonavel
