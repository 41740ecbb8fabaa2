// The machine's sound devices through PortAudio; device ids are PortAudio's indices.
#pragma once

#include <functional>
#include <memory>

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
    std::unique_ptr<FrameOut> CreateFrameOut() override;
    WaveDeviceList Outputs() const override;
    WaveDeviceList Inputs() const override;
    void ListAnew() override;

    // Ends the use of the sound library, behind every device made by this object; nothing else may
    // be called afterwards. With kHangs a call of the library has not come back: the program must
    // then end without the clean-up of the libraries, which would wait for it.
    enum class Ending { kClean, kHangs };
    Ending End();

  private:
    std::shared_ptr<PortAudioSession> session_;
};

}  // namespace sonavel
