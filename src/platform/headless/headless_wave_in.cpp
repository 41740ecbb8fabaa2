#include "platform/headless/headless_wave_in.h"

#include <algorithm>
#include <utility>

namespace sonavel {

HeadlessWaveIn::HeadlessWaveIn(std::shared_ptr<WavePump> pump, WavePace pace)
    : pump_(std::move(pump)), clock_(pace) {
    pump_->Add(this);
}

HeadlessWaveIn::~HeadlessWaveIn() {
    HeadlessWaveIn::Close();
    pump_->Remove(this);
}

WaveResult HeadlessWaveIn::Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) {
    if (open_) return kWaveAllocated;
    if (deviceId != kDefaultWaveDevice && deviceId != 0) return kWaveBadDeviceId;
    format_ = format;
    onBlockDone_ = std::move(onBlockDone);
    open_ = true;
    return kWaveSuccess;
}

WaveResult HeadlessWaveIn::Prepare(WaveBlock&) {
    return IfOpen();
}

WaveResult HeadlessWaveIn::Add(WaveBlock& block) {
    if (!open_) return kWaveInvalidHandle;
    block.done = false;
    block.recordedBytes = 0;
    queue_.push_back(&block);
    return kWaveSuccess;
}

WaveResult HeadlessWaveIn::Start() {
    if (!open_) return kWaveInvalidHandle;
    running_ = true;
    clock_.Start(format_);
    return kWaveSuccess;
}

WaveResult HeadlessWaveIn::Stop() {
    running_ = false;
    return IfOpen();
}

WaveResult HeadlessWaveIn::Reset() {
    running_ = false;
    for (WaveBlock* const block : queue_) block->done = true;
    queue_.clear();
    return IfOpen();
}

WaveResult HeadlessWaveIn::Unprepare(WaveBlock&) {
    return IfOpen();
}

WaveResult HeadlessWaveIn::Close() {
    if (!open_) return kWaveInvalidHandle;
    Reset();
    open_ = false;
    return kWaveSuccess;
}

bool HeadlessWaveIn::Pump() {
    if (!open_ || !running_ || queue_.empty()) return false;
    std::size_t moved = 0;
    while (moved < clock_.BlocksAPump() && !queue_.empty() &&
           clock_.TakeIfDue(queue_.front()->data.size())) {
        WaveBlock& block = *queue_.front();
        queue_.pop_front();
        const int silence = format_.bitsPerSample == 8 ? 128 : 0;
        std::ranges::fill(block.data, static_cast<std::uint8_t>(silence));
        block.recordedBytes = static_cast<std::uint32_t>(block.data.size());
        block.done = true;
        ++moved;
    }
    const WaveBlockDone onBlockDone = onBlockDone_;
    if (moved > 0 && onBlockDone) onBlockDone();
    return true;
}

}  // namespace sonavel
