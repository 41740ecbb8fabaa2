#include "platform/headless/headless_wave_out.h"

#include <utility>

namespace sonavel {

HeadlessWaveOut::HeadlessWaveOut(std::shared_ptr<WavePump> pump, WavePace pace,
                                 std::unique_ptr<WaveSink> sink)
    : pump_(std::move(pump)), sink_(std::move(sink)), clock_(pace) {
    pump_->Add(this);
}

HeadlessWaveOut::~HeadlessWaveOut() {
    HeadlessWaveOut::Close();
    pump_->Remove(this);
}

WaveResult HeadlessWaveOut::Open(int deviceId, const WaveFormat& format,
                                 WaveBlockDone onBlockDone) {
    if (open_) return kWaveAllocated;
    if (deviceId != kDefaultWaveDevice && deviceId != 0) return kWaveBadDeviceId;
    if (!sink_->Begin(format)) return kWaveNotEnabled;
    format_ = format;
    onBlockDone_ = std::move(onBlockDone);
    open_ = true;
    return Restart();
}

WaveResult HeadlessWaveOut::Prepare(WaveBlock&) {
    return IfOpen();
}

WaveResult HeadlessWaveOut::Write(WaveBlock& block) {
    if (!open_) return kWaveInvalidHandle;
    block.done = false;
    // A ring that had run dry begins anew instead of catching up.
    if (queue_.empty()) clock_.Start(format_);
    queue_.push_back(&block);
    return kWaveSuccess;
}

WaveResult HeadlessWaveOut::Pause() {
    running_ = false;
    return IfOpen();
}

WaveResult HeadlessWaveOut::Restart() {
    if (open_ && !running_) {
        running_ = true;
        clock_.Start(format_);
    }
    return IfOpen();
}

WaveResult HeadlessWaveOut::Reset() {
    for (WaveBlock* const block : queue_) block->done = true;
    queue_.clear();
    return IfOpen();
}

WaveResult HeadlessWaveOut::Unprepare(WaveBlock&) {
    return IfOpen();
}

WaveResult HeadlessWaveOut::Close() {
    if (!open_) return kWaveInvalidHandle;
    Reset();
    sink_->End();
    open_ = false;
    running_ = false;
    return kWaveSuccess;
}

bool HeadlessWaveOut::Pump() {
    if (!open_ || !running_ || queue_.empty()) return false;
    std::size_t moved = 0;
    while (moved < clock_.BlocksAPump() && !queue_.empty() &&
           clock_.TakeIfDue(queue_.front()->data.size())) {
        WaveBlock* const block = queue_.front();
        queue_.pop_front();
        sink_->Take(block->data);
        block->done = true;
        ++moved;
    }
    // A copy, because the call may close the device and open it again.
    const WaveBlockDone onBlockDone = onBlockDone_;
    if (moved > 0 && onBlockDone) onBlockDone();
    return true;
}

}  // namespace sonavel
