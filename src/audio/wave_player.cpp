#include "audio/wave_player.h"

#include <algorithm>

#include "platform/settings.h"

namespace sonavel {
namespace {

void SetAccepted(int& number, SettingId id, int value) {
    if (RowOf(id).Accepts(value)) number = value;
}

}  // namespace

CWavePlayer::CWavePlayer(UserPrompts& prompts, ProgressFactory& progress, WaveDevices& devices)
    : CWave(prompts, progress), devices_(devices), recorder_(devices) {}

CWavePlayer::~CWavePlayer() {
    if (IsActive()) CloseOutput();
}

void CWavePlayer::SetPlaybackDevice(int id) {
    SetAccepted(playbackDevice_, SettingId::kPlaybackDevice, id);
}

void CWavePlayer::SetPlaybackBlockFrames(int frames) {
    SetAccepted(playbackBlockFrames_, SettingId::kPlaybackBlockFrames, frames);
}

void CWavePlayer::SetRecordDevice(int id) {
    SetAccepted(recordDevice_, SettingId::kRecordDevice, id);
}

void CWavePlayer::SetRecordBlockFrames(int frames) {
    SetAccepted(recordBlockFrames_, SettingId::kRecordBlockFrames, frames);
}

bool CWavePlayer::Play(std::uint64_t startByte) {
    if (!HasData() || IsRecording()) return false;
    if (!StopForNewStart()) return false;
    const ByteRange whole{0, GetDataSize()};
    source_.SetLoopRange(whole);
    if (IsPaused()) {
        SendReport(MakeReport());
        return Resume();
    }
    return Start({startByte, whole.end}, std::nullopt);
}

bool CWavePlayer::PlayRange(std::uint64_t startByte, std::uint64_t endByte) {
    if (!HasData() || IsRecording()) return false;
    const ByteRange range{startByte, std::min(endByte, GetDataSize())};
    source_.SetLoopRange(range);
    if (IsPaused()) return Resume();
    if (!StopForNewStart()) return false;
    return Start(range, std::nullopt);
}

bool CWavePlayer::PlaySkip(std::uint64_t startByte, std::uint64_t endByte, std::uint64_t skipStart,
                           std::uint64_t skipEnd) {
    if (!HasData() || IsRecording()) return false;
    const ByteRange range{startByte, std::min(endByte, GetDataSize())};
    const auto inRange = [&](std::uint64_t byte) {
        return byte >= range.start && byte <= range.end;
    };
    if (range.start >= range.end || !inRange(skipStart) || !inRange(skipEnd)) return false;
    Stop(StopReport::kShow);
    return Start(range, ByteRange{skipStart, skipEnd});
}

bool CWavePlayer::Pause() {
    if (IsPaused()) return Resume();
    if (!IsPlaying()) return false;
    state_ = PlayState::kPaused;
    const WaveResult result = out_->Pause();
    ShowState("(Pausing) ");
    if (result != kWaveSuccess) ReportDeviceError(result);
    return true;
}

bool CWavePlayer::Resume() {
    state_ = PlayState::kPlaying;
    busy_ = false;
    const WaveResult result = out_->Restart();
    if (result != kWaveSuccess) {
        FailPlaying(result);
        return false;
    }
    ShowState("(Playing) ");
    // A block that came back during the pause has been announced already, and perhaps as the last.
    if (ring_.IsOldestDone()) Refill();
    return true;
}

void CWavePlayer::Stop(StopReport report) {
    source_.SetLooping(false);
    EndPlaying(report == StopReport::kShow ? EndReport::kPositionAndLevels : EndReport::kNone);
}

// A running playback makes way for a new one, which loops if this one did. A device that hangs is
// not asked again at once.
bool CWavePlayer::StopForNewStart() {
    return !IsPlaying() || EndPlaying(EndReport::kPosition) != kWaveNoAnswer;
}

bool CWavePlayer::Start(ByteRange range, std::optional<ByteRange> skip) {
    if (!OpenOutput()) return false;
    source_.Start(range, GetBytesPerSample());
    if (skip) source_.SetSkip(*skip);
    state_ = PlayState::kPlaying;
    busy_ = false;
    Refill();
    return IsActive();
}

WaveFormat CWavePlayer::DeviceFormat() const {
    return {static_cast<std::uint16_t>(GetChannels()), GetSamplesPerSecond(),
            static_cast<std::uint16_t>(GetBytesPerSample() * 8)};
}

bool CWavePlayer::OpenOutput() {
    if (playbackDevice_ == kNoWaveDevice) return false;
    const WaveFormat format = DeviceFormat();
    if (!out_) out_ = devices_.CreateOut();
    WaveResult result = kWaveSuccess;
    if (!out_) {
        result = kWaveNoDriver;
    } else if (!ring_.Allocate(std::size_t{format.BlockAlign()} * playbackBlockFrames_)) {
        result = kWaveNoMemory;
    } else {
        result = out_->Open(playbackDevice_, format, [this] { ServeOutput(); });
        if (result == kWaveSuccess) {
            // Blocks are to queue up silently until the ring is full.
            result = out_->Pause();
            if (result != kWaveSuccess) CloseOutput();
        }
    }
    if (result != kWaveSuccess) ReportDeviceError(result);
    return result == kWaveSuccess;
}

WaveResult CWavePlayer::CloseOutput() {
    out_->Reset();
    for (; !ring_.AreAllFree(); ring_.FreeOldest()) out_->Unprepare(ring_.Oldest());
    const WaveResult result = out_->Close();
    ring_.Release();
    return result;
}

// A step that is under way finds out by itself that its device is lost.
void CWavePlayer::ServeOutput() {
    if (!IsActive() || busy_) return;
    const WaveResult loss = out_->Loss();
    if (loss != kWaveSuccess)
        FailPlaying(loss);
    else
        Refill();
}

void CWavePlayer::Refill() {
    if (!IsPlaying() || busy_) return;
    busy_ = true;
    for (; ring_.IsOldestDone(); ring_.FreeOldest()) out_->Unprepare(ring_.Oldest());
    WaveResult result = QueueBlocks();
    if (result == kWaveSuccess && source_.IsAtEnd() && ring_.AreAllFree()) {
        Stop(StopReport::kShow);
        return;
    }
    if (result == kWaveSuccess) {
        SendReport(MakeReport());
        ShowState("(Playing) ");
        if (!IsPlaying()) return;
        busy_ = false;
        result = out_->Restart();
    }
    if (result != kWaveSuccess) FailPlaying(result);
}

WaveResult CWavePlayer::QueueBlocks() {
    while (ring_.IsNextFree()) {
        WaveBlock& block = ring_.Next();
        const std::optional<std::uint64_t> startByte = source_.FillBlock(Bytes(), block.data);
        if (!startByte) break;
        WaveResult result = out_->Prepare(block);
        if (result == kWaveSuccess) result = out_->Write(block);
        if (result != kWaveSuccess) return result;
        ring_.QueueNext(*startByte);
    }
    return kWaveSuccess;
}

// The device is closed before anyone hears of it, so that an observer can start anew at once.
WaveResult CWavePlayer::EndPlaying(EndReport report, WaveResult cause) {
    if (!IsActive()) return kWaveSuccess;
    Report last = MakeReport();
    last.positionBytes = last.totalBytes;
    state_ = PlayState::kStopped;
    busy_ = false;
    source_.ClearSkip();
    const WaveResult closed = CloseOutput();
    if (report != EndReport::kNone) {
        SendReport(last);
        ShowState("(Stopped) ");
    }
    if (report == EndReport::kPositionAndLevels) ShowPeaks({0, 0});
    if (observer_) observer_->OnStopped();
    const WaveResult result = cause != kWaveSuccess ? cause : closed;
    if (result != kWaveSuccess) ReportDeviceError(result);
    return result;
}

void CWavePlayer::FailPlaying(WaveResult result) {
    source_.SetLooping(false);
    EndPlaying(EndReport::kPositionAndLevels, result);
}

// The levels are those of the block being heard, over its size in frames taken as a count of bytes:
// an intended oddity that the meters' liveliness depends on.
CWavePlayer::Report CWavePlayer::MakeReport() const {
    const std::uint64_t total = GetDataSize();
    const std::uint64_t position =
        std::min(ring_.AreAllFree() ? source_.Position() : ring_.OldestStart(), total);
    const std::uint64_t end = std::min({position + static_cast<unsigned>(playbackBlockFrames_),
                                        total, std::max(source_.End(), position)});
    ChannelPeaks peaks{kNoPeak, kNoPeak};
    if (total > 0) {
        const std::size_t first = std::size_t{FrameOfByte(*this, position)} * GetBlockAlign();
        const std::size_t last = std::size_t{FrameOfByte(*this, end)} * GetBlockAlign();
        peaks = PeaksOfFrames(Bytes().subspan(first, last - first), {GetChannels(), GetBits()});
    }
    return {position, total, peaks};
}

void CWavePlayer::SendReport(const Report& report) {
    ShowPeaks(report.peaks);
    PlayPositionObserver* const listener = positionObserver_ ? positionObserver_ : observer_;
    if (listener) listener->OnPlayPosition(report.positionBytes, report.totalBytes);
}

void CWavePlayer::ShowState(std::string_view text) {
    if (!observer_) return;
    observer_->OnPlayState(text, FrameOfByte(*this, std::min(source_.Position(), GetDataSize())));
}

void CWavePlayer::ShowPeaks(const ChannelPeaks& peaks) {
    if (observer_) observer_->OnPeaks(peaks.left, peaks.right);
}

}  // namespace sonavel
