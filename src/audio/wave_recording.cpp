// The recording side of CWavePlayer.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "audio/wave_player.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kGreatestSoundBytes = std::numeric_limits<std::int32_t>::max();

std::string RecordStateText(std::uint32_t frames, std::uint64_t bytes, std::uint32_t rate) {
    char counts[64];
    std::snprintf(counts, sizeof counts, " / %u Samples / %llu Bytes", frames,
                  static_cast<unsigned long long>(bytes));
    return "(Recording)" + TimeText(rate > 0 ? static_cast<double>(frames) / rate : 0.0) + counts;
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
    settings.limitBytes = kGreatestSoundBytes - GetDataSize();
    const WaveResult result = recorder_.Start(settings, [this] { TakeRecordedBlocks(); });
    if (result != kWaveSuccess) {
        ReportDeviceError(result);
        return false;
    }
    state_ = PlayState::kRecording;
    return true;
}

void CWavePlayer::TakeRecordedBlocks() {
    while (IsRecording()) {
        const std::optional<ChannelPeaks> peaks = recorder_.TakeBlock();
        if (!peaks) return;
        ShowPeaks(*peaks);
        if (observer_)
            observer_->OnRecorded(RecordStateText(
                recorder_.RecordedFrames(), recorder_.RecordedBytes(), GetSamplesPerSecond()));
    }
}

bool CWavePlayer::StopRecording(std::uint32_t cursorFrame) {
    if (!IsRecording()) return false;
    state_ = PlayState::kStopped;
    recorder_.Stop();
    const RecordedSound recorded = recorder_.Take();
    const std::uint32_t frame = std::min(cursorFrame, GetFrameCount());
    const bool inserted = recorded.bytes > 0 && InsertRecorded(frame, recorded);
    ShowPeaks({0, 0});
    if (observer_) observer_->OnPlayState("(Stopped) ", frame);
    return inserted;
}

bool CWavePlayer::InsertRecorded(std::uint32_t frame, const RecordedSound& recorded) {
    const std::uint32_t offset = ByteOffset(frame);
    const std::uint32_t oldSize = GetDataSize();
    // Grown at its end, so that the markers keep their frames.
    const auto frames = static_cast<std::uint32_t>(recorded.bytes / GetBlockAlign());
    if (!GrowWithSilence(GetFrameCount() + frames)) {
        ReportDeviceError(kWaveNoMemory);
        return false;
    }
    const std::uint32_t gained = GetDataSize() - oldSize;
    std::uint8_t* const gap = MutableBytes().data() + offset;
    std::memmove(gap + gained, gap, oldSize - offset);
    CopyRecorded({offset, offset + gained}, recorded);
    SetModified(true);
    return true;
}

void CWavePlayer::CopyRecorded(ByteRange gap, const RecordedSound& recorded) {
    CopyProgress progress(Progress(), recorded.blocks.size());
    std::size_t offset = gap.start;
    for (std::size_t i = 0; i < recorded.blocks.size(); ++i) {
        const auto& block = recorded.blocks[i];
        // The progress window lets the host run, which may have shortened the sound.
        if (offset + block.size() > std::min(gap.end, GetDataSize())) break;
        std::memcpy(MutableBytes().data() + offset, block.data(), block.size());
        offset += block.size();
        progress.AfterBlock(i);
    }
    progress.Finish();
}

}  // namespace sonavel
