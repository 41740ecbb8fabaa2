// Devices of the widgets' tests on which something can be heard live, too: when the test asks.
#pragma once

#include "platform/headless/headless_wave_devices.h"
#include "support/fake_frame_out.h"

namespace sonavel {

class LiveTestDevices : public HeadlessWaveDevices {
  public:
    using HeadlessWaveDevices::HeadlessWaveDevices;

    std::unique_ptr<FrameOut> CreateFrameOut() override {
        return std::make_unique<FakeFrameOut>(frameOut);
    }

    std::shared_ptr<FakeFrameDevice> frameOut = std::make_shared<FakeFrameDevice>();
};

}  // namespace sonavel
