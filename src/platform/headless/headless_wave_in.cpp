#include "platform/headless/headless_wave_in.h"

#include <algorithm>
#include <utility>

namespace sonavel {

HeadlessWaveIn::~HeadlessWaveIn() {
    HeadlessWaveIn::Close();
}

WaveResult HeadlessWaveIn::Open(int deviceId, const WaveFormat& format, WaveBlockDone onBlockDone) {
    const WaveResult openable = IfOpenable(deviceId);
    if (openable == kWaveSuccess) TakeOver(format, std::move(onBlockDone));
    return openable;
}

WaveResult HeadlessWaveIn::Add(WaveBlock& block) {
    if (!open_) return kWaveInvalidHandle;
    block.recordedBytes = 0;
    Queue(block);
    return kWaveSuccess;
}

WaveResult HeadlessWaveIn::Start() {
    if (open_) SetRunning();
    return IfOpen();
}

WaveResult HeadlessWaveIn::Stop() {
    running_ = false;
    return IfOpen();
}

WaveResult HeadlessWaveIn::Reset() {
    running_ = false;
    ReturnQueued();
    return IfOpen();
}

WaveResult HeadlessWaveIn::Close() {
    if (!open_) return kWaveInvalidHandle;
    Reset();
    open_ = false;
    return kWaveSuccess;
}

void HeadlessWaveIn::Move(WaveBlock& block) {
    const int silence = format_.bitsPerSample == 8 ? 128 : 0;
    std::ranges::fill(block.data, static_cast<std::uint8_t>(silence));
    block.recordedBytes = static_cast<std::uint32_t>(block.data.size());
}

}  // namespace sonavel
