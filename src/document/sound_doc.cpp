#include "document/sound_doc.h"

#include <algorithm>
#include <utility>

namespace sonavel {

CSoundDoc::CSoundDoc(const HostServices& services)
    : services_(services),
      sound_(services.prompts, services.progress, services.devices),
      preview_(services.prompts, services.progress, services.devices) {
    ReloadOptions();
}

CSoundDoc::~CSoundDoc() = default;

void CSoundDoc::AddObserver(DocumentObserver* observer) {
    observers_.push_back(observer);
}

void CSoundDoc::RemoveObserver(DocumentObserver* observer) {
    std::erase(observers_, observer);
}

void CSoundDoc::ReloadOptions() {
    optionsText_ = services_.folder.Options().Read();
    options_ = DocumentOptions::Read(optionsText_);
    sound_.SetPlaybackDevice(options_.playbackDeviceId);
    sound_.SetPlaybackBlockFrames(options_.playbackBlockFrames);
    sound_.SetRecordDevice(options_.recordDeviceId);
    sound_.SetRecordBlockFrames(options_.recordBlockFrames);
    LimitHistory();
}

void CSoundDoc::LimitHistory() {
    const int megabytes = RowOf(SettingId::kUndoMemory).Effective(options_.undoMegabytes);
    const std::uint64_t bytes = static_cast<std::uint64_t>(megabytes) << 20;
    history_.SetLimits(
        {bytes ? bytes : services_.undo.memoryBytes, services_.undo.folder, &services_.progress});
    ShowGivenUpSteps();
}

void CSoundDoc::SetTitle(std::string_view title) {
    title_ = title;
    TellTitleOrModified();
}

void CSoundDoc::SetModified(bool modified) {
    sound_.SetModified(modified);
    TellTitleOrModified();
}

Outcome CSoundDoc::FailedAsSound(std::string_view fallback) const {
    return Failed(sound_.LastError().empty() ? fallback : sound_.LastError());
}

void CSoundDoc::StopPlaying() {
    if (sound_.IsPlaying() || sound_.IsPaused()) sound_.Stop(CWavePlayer::StopReport::kShow);
}

void CSoundDoc::TellChanged(std::uint32_t firstChangedFrame) {
    for (DocumentObserver* observer : observers_) observer->OnSoundChanged(firstChangedFrame);
}

void CSoundDoc::TellTitleOrModified() {
    for (DocumentObserver* observer : observers_) observer->OnTitleOrModifiedChanged();
}

void CSoundDoc::TellWaiting(DocumentObserver::Waiting waiting) {
    for (DocumentObserver* observer : observers_) observer->OnWaiting(waiting);
}

void CSoundDoc::NotifyChanged(std::uint32_t firstChangedFrame) {
    sound_.SetModified(true);
    TellChanged(firstChangedFrame);
    TellTitleOrModified();
}

// --- Recording

Outcome CSoundDoc::StartRecording() {
    if (sound_.IsRecording()) return Failed("Recording is under way.");
    // An empty sound is no state to go back to.
    Result<SoundEdit> edit = sound_.HasData() ? BeginEdit("Copy Sample", InsertsAt(0))
                                              : BeginUnrecordedEdit(InsertsAt(0));
    if (!edit) return edit.Ended();
    sound_.SetLastError("");
    if (!sound_.StartRecording()) return FailedAsSound("Recording could not be started.");
    recordingEdit_ = std::move(*edit);
    return Done();
}

Outcome CSoundDoc::StopRecording(std::uint32_t cursorFrame) {
    if (!sound_.IsRecording()) return Failed("Nothing is being recorded.");
    sound_.SetLastError("");
    cursorFrame = std::min(cursorFrame, sound_.GetFrameCount());
    EndMarkerEdit();
    std::optional<SoundEdit> edit = std::exchange(recordingEdit_, std::nullopt);
    if (edit) edit->PlanAnew(InsertsAt(cursorFrame));
    TellWaiting(DocumentObserver::Waiting::kBegins);
    const bool recorded = sound_.StopRecording(cursorFrame);
    TellWaiting(DocumentObserver::Waiting::kEnds);
    if (recorded && edit) edit->Commit(cursorFrame);
    sound_.ReportRecordingEnd();
    return recorded ? Done() : FailedAsSound("Nothing was recorded.");
}

}  // namespace sonavel
