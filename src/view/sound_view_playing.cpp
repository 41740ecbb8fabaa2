// What the view makes of the player's reports: the column of the play position, play scrolling, and
// the state text.
#include <algorithm>

#include "view/sound_view.h"
#include "view/state/status_texts.h"

namespace sonavel {
namespace {

// Play scrolling follows every third report.
constexpr int kReportsPerScroll = 3;
// Above this many frames per pixel the play position drifts to the middle of the window, by so many
// pixels a report; at or below it stands there at once.
constexpr std::int64_t kDriftRatio = 8;
constexpr std::int64_t kDriftPixels = 2;

std::int64_t Towards(std::int64_t from, std::int64_t to, std::int64_t step) {
    return from < to ? std::min(from + step, to) : std::max(from - step, to);
}

}  // namespace

std::optional<Rectangle> CSoundView::PlayPosition() const {
    const bool active = Sound().IsPlaying() || Sound().IsPaused();
    if (!playFrame_ || !active || !document_.Options().displaySeeker) return std::nullopt;
    const Rectangle& waveform = geometry_.waveform;
    const std::int64_t x = Pixels().X(*playFrame_);
    if (x < 0 || x >= waveform.Width()) return std::nullopt;
    const int left = waveform.left + static_cast<int>(x);
    return Rectangle{left, waveform.top, left + 1, waveform.bottom};
}

void CSoundView::InvalidatePlayColumn() {
    const std::optional<Rectangle> column = PlayPosition();
    if (column && observer_) observer_->InvalidateRectangle(*column);
}

void CSoundView::ClearPlayPosition() {
    InvalidatePlayColumn();
    playFrame_.reset();
    playColumn_.reset();
    playReports_ = 0;
}

void CSoundView::OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) {
    if (positionBytes >= totalBytes) {
        ClearPlayPosition();
        return;
    }
    const auto frame =
        static_cast<std::uint32_t>(std::uint64_t{positionBytes} * FrameCount() / totalBytes);
    InvalidatePlayColumn();
    playFrame_ = frame;
    if (document_.Options().playScrolling == 1) FollowPlayPosition(frame);
    InvalidatePlayColumn();
}

void CSoundView::FollowPlayPosition(std::uint32_t frame) {
    const std::int64_t middle = WaveformWidth() / 2;
    if (!playColumn_) playColumn_ = std::clamp<std::int64_t>(Pixels().X(frame), 0, WaveformWidth());
    playColumn_ = TimeRatio() > kDriftRatio ? Towards(*playColumn_, middle, kDriftPixels) : middle;
    if (++playReports_ % kReportsPerScroll != 0) return;
    ScrollHorizontallyTo(Pixels().VirtualX(frame) - *playColumn_);
}

void CSoundView::OnPlayState(std::string_view stateText, std::uint32_t frame) {
    ShowPlayState(Sound(), stateText, frame);
    NoteTransportState();
}

void CSoundView::ShowPlayState(const CWave& sound, std::string_view stateText,
                               std::uint32_t frame) {
    playReport_ = {&sound, std::string(stateText), frame};
    ShowPlayReport();
}

void CSoundView::ShowPlayReport() {
    if (!playReport_) return;
    const CWave& sound = *playReport_->sound;
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    const std::uint32_t frame = std::min(playReport_->frame, sound.GetFrameCount());
    statusText_ = playReport_->state + PositionText(statusFormat_, frame, rate) + " / " +
                  PositionText(statusFormat_, sound.GetFrameCount(), rate);
    if (observer_) observer_->OnStatusText(statusText_);
}

void CSoundView::OnPeaks(std::int32_t left, std::int32_t right) {
    if (observer_) observer_->OnPeaks(left, right);
}

void CSoundView::OnStopped() {
    playFrame_.reset();
    playColumn_.reset();
    playReports_ = 0;
    // The column cannot be found any more once the player has stopped.
    Invalidate(ViewArea::kWaveform);
    NoteTransportState();
}

void CSoundView::OnRecorded(std::string_view stateText) {
    ShowStatusText(stateText);
    NoteTransportState();
}

bool CSoundView::EndRecording() {
    const bool recorded = document_.StopRecording(cursor_);
    ResetTimeZoom();
    NoteTransportState();
    return recorded || Refuse(document_.LastError());
}

void CSoundView::NoteTransportState() {
    if (Sound().GetState() == lastState_) return;
    lastState_ = Sound().GetState();
    if (observer_) observer_->OnTransportChanged();
}

void CSoundView::PlayFromStart() {
    Sound().Play(0);
}

void CSoundView::ShowStatusText(std::string_view text) {
    playReport_.reset();
    statusText_ = text;
    if (observer_) observer_->OnStatusText(statusText_);
}

void CSoundView::ShowSampleValues(int x, int y) {
    if (!document_.Options().displaySampleData || Sound().IsPlaying() || Sound().IsRecording())
        return;
    if (!geometry_.waveform.Contains(x, y) || !Pixels().Usable()) return;
    const std::int64_t frame = Pixels().FrameAt(x - geometry_.waveform.left);
    if (frame < FrameCount()) ShowStatusText(SampleValuesText(Sound(), frame));
}

}  // namespace sonavel
