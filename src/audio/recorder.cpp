#include "audio/recorder.h"

#include <algorithm>
#include <new>
#include <utility>

namespace sonavel {

Recorder::~Recorder() {
    Close();
}

WaveResult Recorder::Start(const RecorderSettings& settings, WaveBlockDone onBlockDone) {
    settings_ = settings;
    recorded_ = {};
    outOfMemory_ = false;
    if (!ring_.Allocate(std::size_t{settings.blockFrames} * settings.format.BlockAlign()))
        return kWaveNoMemory;
    const WaveResult result = OpenAndQueue(std::move(onBlockDone));
    if (result != kWaveSuccess) Close();
    return result;
}

WaveResult Recorder::OpenAndQueue(WaveBlockDone onBlockDone) {
    if (!in_) in_ = devices_.CreateIn();
    if (!in_) return kWaveNoDriver;
    WaveResult result = in_->Open(settings_.deviceId, settings_.format, std::move(onBlockDone));
    open_ = result == kWaveSuccess;
    if (open_) result = QueueFreeBlocks();
    return result == kWaveSuccess ? in_->Start() : result;
}

WaveResult Recorder::QueueFreeBlocks() {
    while (ring_.IsNextFree()) {
        WaveBlock& block = ring_.Next();
        block.recordedBytes = 0;
        block.afterGap = false;
        WaveResult result = in_->Prepare(block);
        if (result == kWaveSuccess) result = in_->Add(block);
        if (result != kWaveSuccess) return result;
        ring_.QueueNext(0);
    }
    return kWaveSuccess;
}

std::optional<ChannelPeaks> Recorder::TakeBlock() {
    while (open_ && ring_.IsOldestDone()) {
        const std::optional<ChannelPeaks> peaks = KeepOldest();
        QueueFreeBlocks();
        if (peaks) return peaks;
    }
    return std::nullopt;
}

std::optional<ChannelPeaks> Recorder::KeepOldest() {
    WaveBlock& block = ring_.Oldest();
    in_->Unprepare(block);
    ring_.FreeOldest();
    const std::uint64_t room = settings_.limitBytes - recorded_.bytes;
    const std::uint64_t filled =
        std::min({room, std::uint64_t{block.recordedBytes}, std::uint64_t{block.data.size()}});
    const auto bytes = static_cast<std::size_t>(filled - filled % settings_.format.BlockAlign());
    if (bytes == 0) return std::nullopt;

    const SampleLayout layout{settings_.format.channels, settings_.format.bitsPerSample};
    const auto sound = std::span<const std::uint8_t>(block.data).first(bytes);
    ChannelPeaks peaks;
    peaks.left = PeakOfBlock(sound, layout, 0);
    peaks.right = layout.channels == 1 ? peaks.left : PeakOfBlock(sound, layout, 1);
    Append(block, bytes);
    return peaks;
}

void Recorder::Append(WaveBlock& block, std::size_t bytes) {
    const std::size_t size = block.data.size();
    try {
        // What the device missed before the first sound is missing from nothing.
        if (block.afterGap && recorded_.bytes > 0) recorded_.gaps.push_back(recorded_.bytes);
        std::vector<std::uint8_t> fresh(size);
        block.data.resize(bytes);
        recorded_.blocks.push_back(std::move(block.data));
        block.data = std::move(fresh);
        recorded_.bytes += bytes;
        if (tap_) tap_->OnRecorded(recorded_.blocks.back());
    } catch (const std::bad_alloc&) {
        // What came so far must stay in one piece, so nothing is kept behind the gap.
        block.data.resize(size);
        settings_.limitBytes = recorded_.bytes;
        outOfMemory_ = true;
    }
}

RecordingEnd Recorder::End() const {
    if (outOfMemory_) return RecordingEnd::kNoMemory;
    if (recorded_.bytes + settings_.format.BlockAlign() > settings_.limitBytes)
        return RecordingEnd::kFull;
    return open_ && in_->Loss() != kWaveSuccess ? RecordingEnd::kDeviceLost : RecordingEnd::kNone;
}

WaveResult Recorder::Stop() {
    if (!open_) return kWaveSuccess;
    WaveResult results[] = {in_->Loss(), in_->Stop(), in_->Reset(), kWaveSuccess};
    while (ring_.IsOldestDone()) KeepOldest();
    results[3] = Close();
    const auto* const error =
        std::ranges::find_if(results, [](WaveResult result) { return result != kWaveSuccess; });
    return error == std::end(results) ? kWaveSuccess : *error;
}

WaveResult Recorder::Close() {
    WaveResult result = kWaveSuccess;
    if (open_) {
        in_->Reset();
        for (; !ring_.AreAllFree(); ring_.FreeOldest()) in_->Unprepare(ring_.Oldest());
        result = in_->Close();
    }
    open_ = false;
    ring_.Release();
    return result;
}

RecordedSound Recorder::Take() {
    return std::exchange(recorded_, {});
}

std::uint32_t Recorder::RecordedFrames() const {
    return static_cast<std::uint32_t>(recorded_.bytes / settings_.format.BlockAlign());
}

}  // namespace sonavel
