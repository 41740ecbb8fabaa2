// A device that asks for frames when the test says so.
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/frame_out.h"

namespace sonavel {

// What the test holds of it.
struct FakeFrameDevice {
    WaveResult failure = kWaveSuccess;  // of the next Open()
    WaveResult loss = kWaveSuccess;
    int deviceId = 0;
    std::uint32_t framesPerSecond = 0;
    FrameSupply* supply = nullptr;  // while it is open
    std::function<void()> onLost;

    bool IsOpen() const { return supply != nullptr; }
    std::vector<float> Hear(std::size_t frames, std::uint32_t latencyFrames = 0) {
        // Too far out to be taken for sound.
        std::vector<float> pairs(2 * frames, 1000.0f);
        if (supply) supply->Pull(pairs, latencyFrames);
        return pairs;
    }
    void Lose(WaveResult why) {
        loss = why;
        if (const auto told = onLost) told();
    }
};

class FakeFrameOut : public FrameOut {
  public:
    explicit FakeFrameOut(std::shared_ptr<FakeFrameDevice> device) : device_(std::move(device)) {}
    ~FakeFrameOut() override { FakeFrameOut::Close(); }

    WaveResult Open(int deviceId, std::uint32_t framesPerSecond, FrameSupply& supply,
                    std::function<void()> onLost) override {
        if (device_->failure != kWaveSuccess) return device_->failure;
        device_->deviceId = deviceId;
        device_->framesPerSecond = framesPerSecond;
        device_->onLost = std::move(onLost);
        device_->loss = kWaveSuccess;
        device_->supply = &supply;
        return kWaveSuccess;
    }
    WaveResult Close() override {
        device_->supply = nullptr;
        device_->onLost = nullptr;
        return kWaveSuccess;
    }
    WaveResult Loss() const override { return device_->loss; }

  private:
    std::shared_ptr<FakeFrameDevice> device_;
};

}  // namespace sonavel
