// Wave devices for a program without sound hardware: outputs hand their sound to a sink, inputs
// hear silence, and all move only when they are pumped.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/headless/wave_pump.h"

namespace sonavel {

class HeadlessWaveDevices : public WaveDevices {
  public:
    // What is played goes nowhere, or to a WAV file, each playback over the one before.
    explicit HeadlessWaveDevices(WavePace pace, std::filesystem::path playedFile = {});

    std::unique_ptr<WaveOut> CreateOut() override;
    std::unique_ptr<WaveIn> CreateIn() override;
    WaveDeviceList Outputs() const override;
    WaveDeviceList Inputs() const override;

    // One round of an event loop: every device moves, and its notifications come from in here.
    // False when no device had anything to do.
    bool Pump() { return pump_->PumpAll(); }
    // Until everything that is queued and not paused has been played. A recording never ends by
    // itself, so none may be running.
    void PumpUntilIdle();

  private:
    WavePace pace_;
    std::filesystem::path playedFile_;
    std::shared_ptr<WavePump> pump_;
};

}  // namespace sonavel
