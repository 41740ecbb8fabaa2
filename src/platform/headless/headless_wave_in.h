// An input device without hardware: it hears silence when it is pumped.
#pragma once

#include <deque>
#include <memory>

#include "platform/headless/wave_pump.h"

namespace sonavel {

class HeadlessWaveIn : public WaveIn, public PumpedWaveDevice {
  public:
    HeadlessWaveIn(std::shared_ptr<WavePump> pump, WavePace pace);
    ~HeadlessWaveIn() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Prepare(WaveBlock& block) override;
    WaveResult Add(WaveBlock& block) override;
    WaveResult Start() override;
    WaveResult Stop() override;
    WaveResult Reset() override;
    WaveResult Unprepare(WaveBlock& block) override;
    WaveResult Close() override;

    bool Pump() override;

  private:
    WaveResult IfOpen() const { return open_ ? kWaveSuccess : kWaveInvalidHandle; }

    std::shared_ptr<WavePump> pump_;
    WaveClock clock_;
    WaveFormat format_;
    WaveBlockDone onBlockDone_;
    std::deque<WaveBlock*> queue_;
    bool open_ = false;
    bool running_ = false;
};

}  // namespace sonavel
