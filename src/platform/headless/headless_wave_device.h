// What headless outputs and inputs share: a queue of blocks that the pump moves one by one.
#pragma once

#include <deque>
#include <memory>
#include <utility>

#include "platform/headless/wave_pump.h"

namespace sonavel {

// `Device`: WaveOut or WaveIn.
template <class Device>
class HeadlessWaveDevice : public Device, public PumpedWaveDevice {
  public:
    HeadlessWaveDevice(std::shared_ptr<WavePump> pump, WavePace pace)
        : pump_(std::move(pump)), clock_(pace) {
        pump_->Add(this);
    }
    ~HeadlessWaveDevice() override { pump_->Remove(this); }
    HeadlessWaveDevice(const HeadlessWaveDevice&) = delete;
    HeadlessWaveDevice& operator=(const HeadlessWaveDevice&) = delete;

    WaveResult Prepare(WaveBlock&) override { return IfOpen(); }
    WaveResult Unprepare(WaveBlock&) override { return IfOpen(); }

    bool Pump() override {
        if (!open_ || !running_ || queue_.empty()) return false;
        std::size_t moved = 0;
        while (moved < clock_.BlocksAPump() && !queue_.empty() &&
               clock_.TakeIfDue(queue_.front()->data.size())) {
            WaveBlock& block = *queue_.front();
            queue_.pop_front();
            Move(block);
            block.done = true;
            ++moved;
        }
        // A copy, because the call may close the device and open it again.
        const WaveBlockDone onBlockDone = onBlockDone_;
        if (moved > 0 && onBlockDone) onBlockDone();
        return true;
    }

  protected:
    // Plays or fills the block.
    virtual void Move(WaveBlock& block) = 0;

    WaveResult IfOpen() const { return open_ ? kWaveSuccess : kWaveInvalidHandle; }

    // Whether the device can be opened under this id.
    WaveResult IfOpenable(int deviceId) const {
        if (open_) return kWaveAllocated;
        const bool known = deviceId == kDefaultWaveDevice || deviceId == 0;
        return known ? kWaveSuccess : kWaveBadDeviceId;
    }

    void TakeOver(const WaveFormat& format, WaveBlockDone onBlockDone) {
        format_ = format;
        onBlockDone_ = std::move(onBlockDone);
        open_ = true;
    }

    void SetRunning() {
        running_ = true;
        clock_.Start(format_);
    }

    void Queue(WaveBlock& block) {
        block.done = false;
        queue_.push_back(&block);
    }

    void ReturnQueued() {
        for (WaveBlock* const block : queue_) block->done = true;
        queue_.clear();
    }

    std::shared_ptr<WavePump> pump_;
    WaveClock clock_;
    WaveFormat format_;
    WaveBlockDone onBlockDone_;
    std::deque<WaveBlock*> queue_;
    bool open_ = false;
    bool running_ = false;
};

}  // namespace sonavel
