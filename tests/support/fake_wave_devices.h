// Wave devices whose clock is the test: nothing is played or recorded until it says so.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/wave_device.h"
#include "support/fake_frame_out.h"

namespace sonavel {

// What the test holds of a device of either direction. A call named in `failures` returns that code
// and does nothing.
class FakeWaveDevice {
  public:
    std::map<std::string, WaveResult> failures;
    std::vector<std::string> calls;
    bool open = false;
    int deviceId = 0;
    WaveFormat format;
    WaveResult loss = kWaveSuccess;
    std::deque<WaveBlock*> queue;  // what the device holds, oldest first

    void Notify() {
        const WaveBlockDone callback = onBlockDone_;
        if (open && callback) callback();
    }

    // The device goes away by itself.
    void Lose(WaveResult why) {
        loss = why;
        Notify();
    }

    WaveResult Call(const std::string& name) {
        calls.push_back(name);
        const auto failure = failures.find(name);
        return failure == failures.end() ? kWaveSuccess : failure->second;
    }
    WaveResult Open(int id, const WaveFormat& wanted, WaveBlockDone callback) {
        const WaveResult result = Call("open");
        if (result != kWaveSuccess) return result;
        open = true;
        loss = kWaveSuccess;
        deviceId = id;
        format = wanted;
        onBlockDone_ = std::move(callback);
        return result;
    }
    WaveResult Enqueue(const std::string& name, WaveBlock& block) {
        const WaveResult result = Call(name);
        if (result != kWaveSuccess) return result;
        block.done = false;
        queue.push_back(&block);
        return result;
    }
    void ReturnFront() {
        queue.front()->done = true;
        queue.pop_front();
    }
    WaveResult Reset() {
        while (!queue.empty()) ReturnFront();
        return Call("reset");
    }
    WaveResult Close() {
        open = false;
        return Call("close");
    }

  private:
    WaveBlockDone onBlockDone_;
};

class FakeWaveOut : public FakeWaveDevice {
  public:
    bool paused = false;
    std::vector<std::vector<std::uint8_t>> played;  // the bytes of every block that was heard

    // The clock: as many blocks are heard to their end, then one notification.
    void Hear(std::size_t blocks = 1) {
        HearSilently(blocks);
        Notify();
    }
    void HearSilently(std::size_t blocks = 1) {
        for (; blocks > 0 && !paused && !queue.empty(); --blocks) {
            played.push_back(queue.front()->data);
            ReturnFront();
        }
    }
    std::vector<std::uint8_t> AllPlayed() const {
        std::vector<std::uint8_t> all;
        for (const auto& block : played) all.insert(all.end(), block.begin(), block.end());
        return all;
    }
};

class FakeWaveIn : public FakeWaveDevice {
  public:
    bool running = false;

    // The clock: these bytes arrive, filling block after block, then one notification. What finds
    // no block is lost, as with a real device.
    void Arrive(std::span<const std::uint8_t> bytes) {
        while (running && !bytes.empty() && !queue.empty()) {
            WaveBlock& block = *queue.front();
            const std::size_t room = block.data.size() - block.recordedBytes;
            const std::size_t count = std::min(room, bytes.size());
            std::copy_n(bytes.begin(), count, block.data.begin() + block.recordedBytes);
            block.recordedBytes += static_cast<std::uint32_t>(count);
            bytes = bytes.subspan(count);
            if (block.recordedBytes == block.data.size()) ReturnFront();
        }
        Notify();
    }
    // Sound is lost; what arrives next goes into another block.
    void DropSound() {
        if (queue.empty()) return;
        if (queue.front()->recordedBytes > 0) ReturnFront();
        if (!queue.empty()) queue.front()->afterGap = true;
    }
};

// What the players own: the interface of a device that the test holds.
template <class Interface, class Device>
class FakeWaveHandle : public Interface {
  public:
    explicit FakeWaveHandle(std::shared_ptr<Device> device) : device_(std::move(device)) {}

    WaveResult Open(int id, const WaveFormat& format, WaveBlockDone callback) override {
        return device_->Open(id, format, std::move(callback));
    }
    WaveResult Prepare(WaveBlock&) override { return device_->Call("prepare"); }
    WaveResult Reset() override { return device_->Reset(); }
    WaveResult Unprepare(WaveBlock&) override { return device_->Call("unprepare"); }
    WaveResult Close() override { return device_->Close(); }
    WaveResult Loss() const override { return device_->loss; }

  protected:
    std::shared_ptr<Device> device_;
};

class FakeWaveOutHandle : public FakeWaveHandle<WaveOut, FakeWaveOut> {
  public:
    using FakeWaveHandle::FakeWaveHandle;

    WaveResult Open(int id, const WaveFormat& format, WaveBlockDone callback) override {
        device_->paused = false;
        return FakeWaveHandle::Open(id, format, std::move(callback));
    }
    WaveResult Write(WaveBlock& block) override { return device_->Enqueue("write", block); }
    WaveResult Pause() override {
        device_->paused = true;
        return device_->Call("pause");
    }
    WaveResult Restart() override {
        device_->paused = false;
        return device_->Call("restart");
    }
};

class FakeWaveInHandle : public FakeWaveHandle<WaveIn, FakeWaveIn> {
  public:
    using FakeWaveHandle::FakeWaveHandle;

    WaveResult Add(WaveBlock& block) override {
        block.recordedBytes = 0;
        return device_->Enqueue("add", block);
    }
    WaveResult Start() override {
        const WaveResult result = device_->Call("start");
        device_->running = result == kWaveSuccess;
        return result;
    }
    WaveResult Stop() override {
        device_->running = false;
        if (!device_->queue.empty() && device_->queue.front()->recordedBytes > 0)
            device_->ReturnFront();
        return device_->Call("stop");
    }
};

// Every player gets devices of its own; Out() and In() are the ones made last, or those that will
// be made first.
class FakeWaveDevices : public WaveDevices {
  public:
    FakeWaveOut& Out() { return *outs_.back(); }
    FakeWaveIn& In() { return *ins_.back(); }

    std::unique_ptr<WaveOut> CreateOut() override {
        return std::make_unique<FakeWaveOutHandle>(NextOf(outs_, outsMade_));
    }
    std::unique_ptr<WaveIn> CreateIn() override {
        return std::make_unique<FakeWaveInHandle>(NextOf(ins_, insMade_));
    }
    std::unique_ptr<FrameOut> CreateFrameOut() override {
        return std::make_unique<FakeFrameOut>(frameOut);
    }
    WaveDeviceList Outputs() const override { return outputs; }
    WaveDeviceList Inputs() const override { return {{{0, "Test input"}}, true}; }
    void ListAnew() override {
        ++listings;
        if (onListAnew) onListAnew();
    }

    // Of all that is played live.
    std::shared_ptr<FakeFrameDevice> frameOut = std::make_shared<FakeFrameDevice>();
    WaveDeviceList outputs{{{0, "Test output"}}, true};
    int listings = 0;
    std::function<void()> onListAnew;

  private:
    template <typename Device>
    static std::shared_ptr<Device> NextOf(std::vector<std::shared_ptr<Device>>& devices,
                                          std::size_t& made) {
        if (made++ > 0) devices.push_back(std::make_shared<Device>());
        return devices.back();
    }

    std::vector<std::shared_ptr<FakeWaveOut>> outs_{std::make_shared<FakeWaveOut>()};
    std::vector<std::shared_ptr<FakeWaveIn>> ins_{std::make_shared<FakeWaveIn>()};
    std::size_t outsMade_ = 0;
    std::size_t insMade_ = 0;
};

}  // namespace sonavel
