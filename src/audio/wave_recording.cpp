// The recording side of CWavePlayer.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "audio/wave_player.h"
#include "sound/sample_types.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

constexpr char kFullText[] =
    "The sound has reached 2,147,483,647 bytes, the most that it can hold.\n"
    "Recording has stopped.";
constexpr char kFullFloatsText[] =
    "The sound has reached 4,294,967,295 frames, the most that it can hold.\n"
    "Recording has stopped.";

std::string RecordStateText(const Recorder& recorder, std::uint32_t rate) {
    const std::uint32_t frames = recorder.RecordedFrames();
    char counts[64];
    std::snprintf(counts, sizeof counts, " / %u Samples / %llu Bytes", frames,
                  static_cast<unsigned long long>(recorder.RecordedBytes()));
    return "(Recording)" + TimeText(rate > 0 ? static_cast<double>(frames) / rate : 0.0) + counts;
}

std::string GapsText(std::size_t gaps) {
    if (gaps == 0) return {};
    return ", " + std::to_string(gaps) + (gaps == 1 ? " gap" : " gaps");
}

// Shows the position of the block that has just been copied, and only when it differs.
class CopyProgress {
  public:
    CopyProgress(ProgressFactory& factory, std::size_t blocks)
        : window_(factory.CreateProgress("Recorded data ready")), blocks_(blocks) {
        window_->SetRange(0, 100);
    }

    void AfterBlock(std::size_t index) {
        const double share = index == 0 ? 0.0 : 100.0 / (static_cast<double>(blocks_) / index);
        Show(static_cast<int>(std::lround(share)));
    }
    void Finish() { Show(100); }

  private:
    void Show(int position) {
        if (position == shown_) return;
        shown_ = position;
        window_->SetPosition(position);
        window_->Poll();
    }

    std::unique_ptr<ProgressWindow> window_;
    std::size_t blocks_;
    int shown_ = -1;
};

}  // namespace

bool CWavePlayer::StartRecording() {
    if (IsRecording() || recordDevice_ == kNoWaveDevice || GetBlockAlign() == 0) return false;
    Stop(StopReport::kShow);
    RecorderSettings settings;
    settings.deviceId = recordDevice_;
    settings.format = DeviceFormat();
    settings.blockFrames = static_cast<std::uint32_t>(recordBlockFrames_);
    settings.limitBytes = MostSoundBytes(GetFormat()) - GetDataSize();
    recordingError_ = kWaveSuccess;
    recordingEnd_ = RecordingEnd::kNone;
    const WaveResult result = recorder_.Start(settings, [this] { ServeInput(); });
    if (result != kWaveSuccess) {
        ReportDeviceError(result);
        return false;
    }
    state_ = PlayState::kRecording;
    return true;
}

void CWavePlayer::ServeInput() {
    TakeRecordedBlocks();
    if (!IsRecording() || recorder_.End() == RecordingEnd::kNone) return;
    if (observer_) observer_->OnRecordingEnded();
    if (!IsRecording()) return;
    StopRecording(0);
    ReportRecordingEnd();
}

void CWavePlayer::TakeRecordedBlocks() {
    while (IsRecording()) {
        const std::optional<ChannelPeaks> peaks = recorder_.TakeBlock();
        if (!peaks) return;
        ShowPeaks(*peaks);
        if (observer_)
            observer_->OnRecorded(RecordStateText(recorder_, GetSamplesPerSecond()) +
                                  GapsText(recorder_.GapCount()));
    }
}

bool CWavePlayer::StopRecording(std::uint32_t cursorFrame) {
    if (!IsRecording()) return false;
    state_ = PlayState::kStopped;
    recordingError_ = recorder_.Stop();
    recordingEnd_ = recorder_.End();
    const RecordedSound recorded = recorder_.Take();
    const std::uint32_t frame = std::min(cursorFrame, GetFrameCount());
    const bool inserted = recorded.bytes > 0 && InsertRecorded(frame, recorded);
    ShowPeaks({0, 0});
    if (observer_) observer_->OnPlayState("(Stopped) ", frame);
    return inserted;
}

void CWavePlayer::ReportRecordingEnd() {
    const WaveResult error = std::exchange(recordingError_, kWaveSuccess);
    const RecordingEnd end = std::exchange(recordingEnd_, RecordingEnd::kNone);
    if (end == RecordingEnd::kNoMemory)
        ReportDeviceError(kWaveNoMemory);
    else if (error != kWaveSuccess)
        ReportDeviceError(error);
    else if (end == RecordingEnd::kFull)
        ReportError(AreWholeNumbers(GetBits()) ? kFullText : kFullFloatsText);
}

bool CWavePlayer::InsertRecorded(std::uint32_t frame, const RecordedSound& recorded) {
    const std::uint64_t offset = ByteOffset(frame);
    const std::uint64_t oldSize = GetDataSize();
    const auto wanted = static_cast<std::uint32_t>(recorded.bytes / GetBlockAlign());
    // Grown at its end, so that the markers keep their frames.
    const std::uint32_t frames = GrowBy(wanted);
    if (frames < wanted) recordingEnd_ = RecordingEnd::kNoMemory;
    if (frames == 0) return false;
    const std::uint64_t gained = GetDataSize() - oldSize;
    MoveBytes(*this, offset, oldSize - offset, offset + gained);
    CopyRecorded({offset, offset + gained}, recorded);
    MarkGaps(frame, frames, recorded);
    SetModified(true);
    return true;
}

// By as many frames as the memory holds; how many these are.
std::uint32_t CWavePlayer::GrowBy(std::uint32_t frames) {
    constexpr std::uint32_t kLeastStep = 256;
    const std::uint32_t before = GetFrameCount();
    std::uint32_t grown = 0;
    for (std::uint32_t step = frames; grown < frames && step > 0;) {
        step = std::min(step, frames - grown);
        if (GrowWithSilence(before + grown + step))
            grown += step;
        else
            step = step > kLeastStep ? step / 2 : 0;
    }
    return grown;
}

void CWavePlayer::CopyRecorded(ByteRange room, const RecordedSound& recorded) {
    CopyProgress progress(Progress(), recorded.blocks.size());
    std::uint64_t offset = room.start;
    for (std::size_t i = 0; i < recorded.blocks.size(); ++i) {
        const auto& block = recorded.blocks[i];
        // The progress window lets the host run, which may have shortened the sound.
        const std::uint64_t end = std::min(room.end, GetDataSize());
        const std::uint64_t count =
            std::min<std::uint64_t>(block.size(), std::max(end, offset) - offset);
        std::memcpy(MutableBytes().data() + offset, block.data(), count);
        offset += count;
        progress.AfterBlock(i);
    }
    progress.Finish();
}

void CWavePlayer::MarkGaps(std::uint32_t frame, std::uint32_t frames,
                           const RecordedSound& recorded) {
    for (const std::uint64_t byte : recorded.gaps) {
        const auto gapFrame = static_cast<std::uint32_t>(byte / GetBlockAlign());
        if (gapFrame < frames) AddMarker(frame + gapFrame, "Gap", 0);
    }
}

}  // namespace sonavel
