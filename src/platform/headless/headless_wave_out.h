// An output device without hardware: it hands its blocks to a sink when it is pumped.
#pragma once

#include <deque>
#include <memory>

#include "platform/headless/wave_pump.h"
#include "platform/headless/wave_sink.h"

namespace sonavel {

class HeadlessWaveOut : public WaveOut, public PumpedWaveDevice {
  public:
    HeadlessWaveOut(std::shared_ptr<WavePump> pump, WavePace pace, std::unique_ptr<WaveSink> sink);
    ~HeadlessWaveOut() override;

    WaveResult Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) override;
    WaveResult Prepare(WaveBlock& block) override;
    WaveResult Write(WaveBlock& block) override;
    WaveResult Pause() override;
    WaveResult Restart() override;
    WaveResult Reset() override;
    WaveResult Unprepare(WaveBlock& block) override;
    WaveResult Close() override;

    bool Pump() override;

  private:
    WaveResult IfOpen() const { return open_ ? kWaveSuccess : kWaveInvalidHandle; }

    std::shared_ptr<WavePump> pump_;
    std::unique_ptr<WaveSink> sink_;
    WaveClock clock_;
    WaveFormat format_;
    WaveBlockDone onBlockDone_;
    std::deque<WaveBlock*> queue_;
    bool open_ = false;
    bool running_ = false;
};

}  // namespace sonavel
