// The machine's sound devices through PortAudio; device ids are PortAudio's indices.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/wave_device.h"

namespace sonavel {

class PortAudioSession;

class PortAudioWaveDevices : public WaveDevices {
  public:
    // `post` hands a function to the event loop of the user-interface thread, which is the one that
    // uses the devices. It is called on a thread of this object's own, and must be callable until
    // this object and every device made by it are gone.
    explicit PortAudioWaveDevices(std::function<void(std::function<void()>)> post);
    ~PortAudioWaveDevices() override;

    std::unique_ptr<WaveOut> CreateOut() override;
    std::unique_ptr<WaveIn> CreateIn() override;
    std::vector<WaveDeviceInfo> Outputs() const override;
    std::vector<WaveDeviceInfo> Inputs() const override;

    // How often, so far, an output had nothing to play in the middle of a sound, and sound that
    // came in was lost.
    std::uint64_t Underflows() const;
    std::uint64_t Overflows() const;

  private:
    std::shared_ptr<PortAudioSession> session_;
};

}  // namespace sonavel
