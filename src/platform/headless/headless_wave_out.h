// An output device without hardware: it hands its blocks to a sink when it is pumped.
#pragma once

#include <memory>

#include "platform/headless/headless_wave_device.h"
#include "platform/headless/wave_sink.h"

namespace sonavel {

class HeadlessWaveOut : public HeadlessWaveDevice<WaveOut> {
  public:
    HeadlessWaveOut(std::shared_ptr<WavePump> pump, WavePace pace, std::unique_ptr<WaveSink> sink);
    ~HeadlessWaveOut() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Write(WaveBlock& block) override;
    WaveResult Pause() override;
    WaveResult Restart() override;
    WaveResult Reset() override;
    WaveResult Close() override;

  protected:
    void Move(WaveBlock& block) override;

  private:
    std::unique_ptr<WaveSink> sink_;
};

}  // namespace sonavel
