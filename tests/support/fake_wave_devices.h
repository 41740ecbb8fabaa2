// Wave devices whose clock is the test: nothing is played or recorded until it says so.
#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/wave_device.h"

namespace sonavel {

// What both directions keep. A call named in `failures` returns that code and does nothing.
class FakeWaveDevice {
  public:
    std::map<std::string, WaveResult> failures;
    std::vector<std::string> calls;
    bool open = false;
    int deviceId = 0;
    WaveFormat format;
    std::deque<WaveBlock*> queue;  // what the device holds, oldest first

    void Notify() {
        const WaveBlockDone callback = onBlockDone;
        if (open && callback) callback();
    }

  protected:
    WaveResult Call(const std::string& name) {
        calls.push_back(name);
        const auto failure = failures.find(name);
        return failure == failures.end() ? kWaveSuccess : failure->second;
    }
    WaveResult OpenWith(int id, const WaveFormat& wanted, WaveBlockDone callback) {
        const WaveResult result = Call("open");
        if (result != kWaveSuccess) return result;
        open = true;
        deviceId = id;
        format = wanted;
        onBlockDone = std::move(callback);
        return result;
    }
    WaveResult Enqueue(const std::string& name, WaveBlock& block) {
        const WaveResult result = Call(name);
        if (result != kWaveSuccess) return result;
        block.done = false;
        queue.push_back(&block);
        return result;
    }
    WaveResult ReturnAll(const std::string& name) {
        for (WaveBlock* block : queue) block->done = true;
        queue.clear();
        return Call(name);
    }
    WaveResult CloseNow() {
        open = false;
        return Call("close");
    }

  private:
    WaveBlockDone onBlockDone;
};

class FakeWaveOut : public FakeWaveDevice, public WaveOut {
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
            WaveBlock* const block = queue.front();
            queue.pop_front();
            played.push_back(block->data);
            block->done = true;
        }
    }
    std::vector<std::uint8_t> AllPlayed() const {
        std::vector<std::uint8_t> all;
        for (const auto& block : played) all.insert(all.end(), block.begin(), block.end());
        return all;
    }

    WaveResult Open(int id, const WaveFormat& wanted, WaveBlockDone callback) override {
        paused = false;
        return OpenWith(id, wanted, std::move(callback));
    }
    WaveResult Prepare(WaveBlock&) override { return Call("prepare"); }
    WaveResult Write(WaveBlock& block) override { return Enqueue("write", block); }
    WaveResult Pause() override {
        paused = true;
        return Call("pause");
    }
    WaveResult Restart() override {
        paused = false;
        return Call("restart");
    }
    WaveResult Reset() override { return ReturnAll("reset"); }
    WaveResult Unprepare(WaveBlock&) override { return Call("unprepare"); }
    WaveResult Close() override { return CloseNow(); }
};

class FakeWaveIn : public FakeWaveDevice, public WaveIn {
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

    WaveResult Open(int id, const WaveFormat& wanted, WaveBlockDone callback) override {
        return OpenWith(id, wanted, std::move(callback));
    }
    WaveResult Prepare(WaveBlock&) override { return Call("prepare"); }
    WaveResult Add(WaveBlock& block) override {
        block.recordedBytes = 0;
        return Enqueue("add", block);
    }
    WaveResult Start() override {
        const WaveResult result = Call("start");
        running = result == kWaveSuccess;
        return result;
    }
    WaveResult Stop() override {
        running = false;
        if (!queue.empty() && queue.front()->recordedBytes > 0) ReturnFront();
        return Call("stop");
    }
    WaveResult Reset() override { return ReturnAll("reset"); }
    WaveResult Unprepare(WaveBlock&) override { return Call("unprepare"); }
    WaveResult Close() override { return CloseNow(); }

  private:
    void ReturnFront() {
        queue.front()->done = true;
        queue.pop_front();
    }
};

// Every player gets devices of its own; Out() and In() are the ones made last, or those that will
// be made first.
class FakeWaveDevices : public WaveDevices {
  public:
    FakeWaveOut& Out() { return *outs_.back(); }
    FakeWaveIn& In() { return *ins_.back(); }

    std::unique_ptr<WaveOut> CreateOut() override;
    std::unique_ptr<WaveIn> CreateIn() override;
    std::vector<WaveDeviceInfo> Outputs() const override { return {{0, "Test output"}}; }
    std::vector<WaveDeviceInfo> Inputs() const override { return {{0, "Test input"}}; }

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

// What the players own: it passes everything on to the device that the test holds.
class FakeWaveOutHandle : public WaveOut {
  public:
    explicit FakeWaveOutHandle(std::shared_ptr<FakeWaveOut> device) : device_(std::move(device)) {}

    WaveResult Open(int id, const WaveFormat& format, WaveBlockDone callback) override {
        return device_->Open(id, format, std::move(callback));
    }
    WaveResult Prepare(WaveBlock& block) override { return device_->Prepare(block); }
    WaveResult Write(WaveBlock& block) override { return device_->Write(block); }
    WaveResult Pause() override { return device_->Pause(); }
    WaveResult Restart() override { return device_->Restart(); }
    WaveResult Reset() override { return device_->Reset(); }
    WaveResult Unprepare(WaveBlock& block) override { return device_->Unprepare(block); }
    WaveResult Close() override { return device_->Close(); }

  private:
    std::shared_ptr<FakeWaveOut> device_;
};

class FakeWaveInHandle : public WaveIn {
  public:
    explicit FakeWaveInHandle(std::shared_ptr<FakeWaveIn> device) : device_(std::move(device)) {}

    WaveResult Open(int id, const WaveFormat& format, WaveBlockDone callback) override {
        return device_->Open(id, format, std::move(callback));
    }
    WaveResult Prepare(WaveBlock& block) override { return device_->Prepare(block); }
    WaveResult Add(WaveBlock& block) override { return device_->Add(block); }
    WaveResult Start() override { return device_->Start(); }
    WaveResult Stop() override { return device_->Stop(); }
    WaveResult Reset() override { return device_->Reset(); }
    WaveResult Unprepare(WaveBlock& block) override { return device_->Unprepare(block); }
    WaveResult Close() override { return device_->Close(); }

  private:
    std::shared_ptr<FakeWaveIn> device_;
};

inline std::unique_ptr<WaveOut> FakeWaveDevices::CreateOut() {
    return std::make_unique<FakeWaveOutHandle>(NextOf(outs_, outsMade_));
}

inline std::unique_ptr<WaveIn> FakeWaveDevices::CreateIn() {
    return std::make_unique<FakeWaveInHandle>(NextOf(ins_, insMade_));
}

}  // namespace sonavel
