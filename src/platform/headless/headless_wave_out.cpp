#include "platform/headless/headless_wave_out.h"

#include <utility>

namespace sonavel {

HeadlessWaveOut::HeadlessWaveOut(std::shared_ptr<WavePump> pump, WavePace pace,
                                 std::unique_ptr<WaveSink> sink)
    : HeadlessWaveDevice(std::move(pump), pace), sink_(std::move(sink)) {}

HeadlessWaveOut::~HeadlessWaveOut() {
    HeadlessWaveOut::Close();
}

WaveResult HeadlessWaveOut::Open(int deviceId, const WaveFormat& format,
                                 WaveBlockDone onBlockDone) {
    const WaveResult openable = IfOpenable(deviceId);
    if (openable != kWaveSuccess) return openable;
    if (!sink_->Begin(format)) return kWaveNotEnabled;
    TakeOver(format, std::move(onBlockDone));
    return Restart();
}

WaveResult HeadlessWaveOut::Write(WaveBlock& block) {
    if (!open_) return kWaveInvalidHandle;
    // A ring that had run dry begins anew instead of catching up.
    if (queue_.empty()) clock_.Start(format_);
    Queue(block);
    return kWaveSuccess;
}

WaveResult HeadlessWaveOut::Pause() {
    running_ = false;
    return IfOpen();
}

WaveResult HeadlessWaveOut::Restart() {
    if (open_ && !running_) SetRunning();
    return IfOpen();
}

WaveResult HeadlessWaveOut::Reset() {
    ReturnQueued();
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

void HeadlessWaveOut::Move(WaveBlock& block) {
    sink_->Take(block.data);
}

}  // namespace sonavel
