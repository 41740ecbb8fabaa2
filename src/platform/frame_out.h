// A device that is fed without a queue: it asks for each frame shortly before it is heard.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "platform/wave_device.h"

namespace sonavel {

// Who has the frames.
class FrameSupply {
  public:
    // Fills all pairs, left and right of each frame as shares of full scale. Called on the device's
    // thread: no lock, no allocation. `latencyFrames`: how long until the first of them is heard.
    virtual void Pull(std::span<float> pairs, std::uint32_t latencyFrames) = 0;

  protected:
    ~FrameSupply() = default;
};

class FrameOut {
  public:
    // Closes the device when it is open.
    virtual ~FrameOut() = default;

    // From now on the source, which must stay until Close(), is asked for stereo frames. `onLost`
    // comes from the host's event loop when Loss() says so.
    virtual WaveResult Open(int deviceId, std::uint32_t framesPerSecond, FrameSupply& supply,
                            std::function<void()> onLost) = 0;
    // The source is asked no more.
    virtual WaveResult Close() = 0;
    // As WaveDevice::Loss().
    virtual WaveResult Loss() const = 0;
};

}  // namespace sonavel
