// What stands in for an event loop and a clock where there is no sound hardware: headless wave
// devices move when they are pumped.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "platform/wave_device.h"

namespace sonavel {

enum class WavePace {
    kAsFastAsAsked,  // every pump moves one block
    kRealTime,       // a pump moves the blocks whose time has passed by the steady clock
};

class PumpedWaveDevice {
  public:
    virtual ~PumpedWaveDevice() = default;

    // Plays or fills the blocks that are due and announces them. False when there is nothing for
    // the device to do until it is called again.
    virtual bool Pump() = 0;
};

// The devices that are alive. A pump may create and destroy devices.
class WavePump {
  public:
    void Add(PumpedWaveDevice* device) { devices_.push_back(device); }
    void Remove(PumpedWaveDevice* device);
    // False when no device had anything to do.
    bool PumpAll();

  private:
    std::vector<PumpedWaveDevice*> devices_;
};

// Tells a device which of its blocks are due.
class WaveClock {
  public:
    explicit WaveClock(WavePace pace) : pace_(pace) {}

    // Sound begins to move now.
    void Start(const WaveFormat& format);
    // How many blocks one pump may move at most.
    std::size_t BlocksAPump() const;
    // True, and the clock moves on by the block, when its last frame's time has come.
    bool TakeIfDue(std::size_t blockBytes);

  private:
    WavePace pace_;
    double bytesPerSecond_ = 1;
    std::chrono::steady_clock::time_point blockStart_;
};

}  // namespace sonavel
