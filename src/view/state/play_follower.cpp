#include "view/state/play_follower.h"

#include <algorithm>

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

PlayFollower::PlayFollower(CSoundDoc& document, ViewState& state, const ViewSettings& settings,
                           const RepaintNotes& notes)
    : document_(document),
      state_(state),
      settings_(settings),
      notes_(notes),
      previewReports_(document, *this) {
    document_.Sound().SetObserver(this);
    document_.Preview().SetObserver(&previewReports_);
}

PlayFollower::~PlayFollower() {
    document_.Sound().SetObserver(nullptr);
    document_.Preview().SetObserver(nullptr);
}

// --- The play position

std::optional<Rectangle> PlayFollower::PlayPosition() const {
    const CWavePlayer& sound = document_.Sound();
    const bool active = sound.IsPlaying() || sound.IsPaused();
    if (!playFrame_ || !active || !document_.Options().displaySeeker) return std::nullopt;
    const Rectangle& waveform = state_.Geometry().waveform;
    const std::int64_t x = state_.Zoom().Pixels().X(*playFrame_);
    if (x < 0 || x >= waveform.Width()) return std::nullopt;
    const int left = waveform.left + static_cast<int>(x);
    return Rectangle{left, waveform.top, left + 1, waveform.bottom};
}

void PlayFollower::NoteColumn() const {
    if (const std::optional<Rectangle> column = PlayPosition())
        notes_.Window().InvalidateRectangle(*column);
}

void PlayFollower::Forget() {
    playFrame_.reset();
    playColumn_.reset();
    playReports_ = 0;
}

void PlayFollower::ClearPlayPosition() {
    NoteColumn();
    Forget();
}

void PlayFollower::OnPlayPosition(std::uint64_t positionBytes, std::uint64_t totalBytes) {
    if (positionBytes >= totalBytes) {
        ClearPlayPosition();
        return;
    }
    const std::uint64_t frames = document_.Sound().GetFrameCount();
    NoteColumn();
    // Whole frames first, which keeps the product of long sounds within 64 bits.
    const bool wholeFrames = frames > 0 && totalBytes % frames == 0;
    playFrame_ = static_cast<std::uint32_t>(wholeFrames ? positionBytes / (totalBytes / frames)
                                                        : positionBytes * frames / totalBytes);
    if (document_.Options().playScrolling == 1) Follow(*playFrame_);
    NoteColumn();
}

void PlayFollower::Follow(std::uint32_t frame) {
    ViewZoom& zoom = state_.Zoom();
    const std::int64_t width = state_.WaveformWidth();
    const std::int64_t middle = width / 2;
    if (!playColumn_) playColumn_ = std::clamp<std::int64_t>(zoom.Pixels().X(frame), 0, width);
    playColumn_ =
        zoom.TimeRatio() > kDriftRatio ? Towards(*playColumn_, middle, kDriftPixels) : middle;
    if (++playReports_ % kReportsPerScroll != 0) return;
    zoom.ScrollHorizontallyTo(zoom.Pixels().VirtualX(frame) - *playColumn_);
}

// --- State and texts

void PlayFollower::OnPlayState(std::string_view stateText, std::uint32_t frame) {
    ShowPlayState(document_.Sound(), stateText, frame);
    NoteTransportState();
}

void PlayFollower::ShowPlayState(const CWave& sound, std::string_view stateText,
                                 std::uint32_t frame) {
    playReport_ = {&sound, std::string(stateText), frame};
    RefreshPlayState();
}

void PlayFollower::RefreshPlayState() {
    if (!playReport_) return;
    const CWave& sound = *playReport_->sound;
    const StatusFormat format = settings_.statusFormat;
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    const std::uint32_t frame = std::min(playReport_->frame, sound.GetFrameCount());
    statusText_ = playReport_->state + PositionText(format, frame, rate) + " / " +
                  PositionText(format, sound.GetFrameCount(), rate);
    notes_.Window().OnStatusText(statusText_);
}

void PlayFollower::ShowStatusText(std::string_view text) {
    playReport_.reset();
    statusText_ = text;
    notes_.Window().OnStatusText(statusText_);
}

void PlayFollower::NoteTransportState() {
    const PlayState state = document_.Sound().GetState();
    if (state == lastState_) return;
    lastState_ = state;
    notes_.Window().OnTransportChanged();
}

void PlayFollower::OnPeaks(std::int32_t left, std::int32_t right) {
    if (meter_) meter_->OnPeaks(left, right);
}

void PlayFollower::OnStopped() {
    Forget();
    // The column cannot be found any more once the player has stopped.
    notes_.Area(ViewArea::kWaveform);
    NoteTransportState();
}

// --- Recording

void PlayFollower::OnRecorded(std::string_view stateText) {
    ShowStatusText(stateText);
    NoteTransportState();
}

Outcome PlayFollower::EndRecording() {
    Outcome recorded = document_.StopRecording(state_.Cursor());
    state_.Zoom().FitTime();
    NoteTransportState();
    return recorded;
}

void PlayFollower::OnRecordingEnded() {
    // No command waits for this end.
    const Outcome ended = EndRecording();
    if (ended.IsFailed()) document_.Services().prompts.ShowStatus(ended.Reason());
}

}  // namespace sonavel
