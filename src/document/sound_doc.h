// CSoundDoc: one sound document, with its sound, preview sound, options and undo history.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "audio/wave_player.h"
#include "document/document_observer.h"
#include "document/document_options.h"
#include "document/document_questions.h"
#include "document/file_origin.h"
#include "document/history_listener.h"
#include "document/import_origin.h"
#include "document/sound_edit.h"
#include "document/step_script.h"
#include "document/undo_history.h"
#include "platform/host_services.h"
#include "platform/outcome.h"

namespace sonavel {

class CSoundDoc {
  public:
    explicit CSoundDoc(const HostServices& services);
    ~CSoundDoc();
    CSoundDoc(const CSoundDoc&) = delete;
    CSoundDoc& operator=(const CSoundDoc&) = delete;

    void AddObserver(DocumentObserver* observer);
    void RemoveObserver(DocumentObserver* observer);

    // --- Life cycle

    // Makes an empty sound; fails for a format that cannot be edited.
    Outcome NewDocument(const NewSoundChoice& choice);
    // Reads by extension: the text from the first "." of the path on. On failure the sound is
    // unchanged.
    Outcome OpenDocument(const std::filesystem::path& path);
    // Reads any sound file, by its content, and keeps what the file holds beside its samples.
    Outcome ImportDocument(const std::filesystem::path& path, const ImportChoice& choice);
    // An imported document's own path is written in the format that it came in, once the person has
    // accepted what that loses. Else writes by extension; takes the path as its own on success. A
    // WAV save while marker saving is off writes the file and still fails.
    // Asks before it writes over what another program wrote, unless somebody has asked already.
    enum class OtherWriters { kAskAbout, kAccepted };
    Outcome SaveDocument(const std::filesystem::path& path,
                         OtherWriters others = OtherWriters::kAskAbout);
    Outcome ReadAgain();  // the document's own file
    // To be called before a copy is written there: what a crash leaves of it is removed later.
    void NoteWriting(const std::filesystem::path& path);
    // What of the sound a save under that path would leave out, or lose when the file is read
    // again; empty for nothing.
    std::string SaveWarning(const std::filesystem::path& path) const;
    // Likewise of a save in another format, as the Save As dialog offers it.
    std::string SaveWarning(const SaveAsChoice& choice) const;
    // Whether only the beginning of the sound would be written there.
    bool SaveCutsSound(const std::filesystem::path& path) const;
    // What the extended Save As dialog is opened with, and what its OK does: the conversions chosen
    // there as one undo step, then SaveDocument.
    SaveAsRequest QuestionOfSaveAs() const;
    Outcome SaveAs(const SaveAsChoice& choice);

    // --- Identity

    const std::filesystem::path& Path() const { return path_; }  // empty while untitled
    const std::string& Title() const { return title_; }
    void SetTitle(std::string_view title);
    bool GetModified() const { return sound_.GetModified(); }
    void SetModified(bool modified);

    // The file that was opened, imported or saved last, as it was left then; null for none.
    const FileOrigin* File() const { return file_ ? &*file_ : nullptr; }
    FileState StateOfFile() const;  // now
    // Whether reading that file again gives the sound as it was then, markers and tags included.
    bool FileHoldsSound() const { return fileHolds_ == FileHolds::kAll; }

    // Whether it was imported, and not saved as another file since.
    bool IsImported() const { return origin_.has_value(); }
    const ImportOrigin* Import() const { return origin_ ? &*origin_ : nullptr; }
    const SoundFileDescription* Origin() const { return origin_ ? &origin_->description : nullptr; }
    // "FLAC, 24 bit, 96,000 Hz" and what was missing; empty of what was not imported.
    std::string OriginLine() const;

    // --- Contents

    // Of a foreign file, and what was set since; no other documents have any.
    const std::vector<SoundTag>& Tags() const { return extras_.tags; }
    // An empty value removes the tag. Marks the document modified.
    void SetTag(std::string_view key, std::string_view value);
    // Tags and foreign chunks.
    const SoundExtras& Extras() const { return extras_; }

    CWavePlayer& Sound() { return sound_; }
    const CWavePlayer& Sound() const { return sound_; }
    CWavePlayer& Preview() { return preview_; }
    const CWavePlayer& Preview() const { return preview_; }
    const DocumentOptions& Options() const { return options_; }
    // Reads Options.ini anew and hands the devices to the sound.
    void ReloadOptions();
    void SetSavesUndo(bool saves) { options_.saveUndo = saves ? 1 : 0; }
    // Options.ini as it was then, for views, which take their settings from the same reading.
    const ProfileText& OptionsText() const { return optionsText_; }
    void SetSaveMarkers(bool save) { options_.saveMarkers = save ? 1 : 0; }
    UndoHistory& History() { return history_; }
    const UndoHistory& History() const { return history_; }
    const HostServices& Services() const { return services_; }

    // --- Edits

    // To be called before every edit, with what it is going to replace: stops playing, and when
    // undo is on keeps that for the step of that name. Nothing while recording, or when there is no
    // room for it and the person chose not to go on without undo.
    Result<SoundEdit> BeginEdit(std::string_view stepName,
                                const EditPlan& plan = ReplacesEverything());
    // Likewise for an edit that stores no step; the steps before it stay exact.
    Result<SoundEdit> BeginUnrecordedEdit(const EditPlan& plan = ReplacesEverything());
    // Likewise for edits that make another sound, whose SoundEdit::ReplaceSound() moves the old one
    // into the step; copies nothing.
    Result<SoundEdit> BeginReplacement(std::string_view stepName);
    Result<SoundEdit> BeginUnrecordedReplacement();
    // Likewise for an edit of which is known what it replaces, and that puts another sound in: with
    // the record's samples where there is room for them, else as one that replaces everything.
    Result<SoundEdit> BeginTakingOver(std::string_view stepName, EditRecord replaced);
    // Whether an edit has begun and not ended, so that the sound is nothing to be shown or played;
    // a recording changes it when it ends.
    bool IsBeingChanged() const { return changesUnderWay_ > (recordingEdit_ ? 1 : 0); }
    // Marks the sound modified and tells the observers that it changed from this frame on.
    void NotifyChanged(std::uint32_t firstChangedFrame);

    // Each fails and does nothing when undo is off or there is nothing to undo or redo. Format,
    // samples and markers come back; the observers rebuild from frame 0.
    Outcome Undo();
    Outcome Redo();
    bool CanUndo() const;
    bool CanRedo() const;
    // Hears of every change as the history keeps it; may be null.
    void SetHistoryListener(HistoryListener* listener) { historyListener_ = listener; }
    // The edits since the document was opened, and what is said of them.
    StepScript& Steps() { return steps_; }
    // Does once more what a record from elsewhere did, as an edit with a step of that name or, with
    // an empty one, without: exchanges it with the sound. Fails where it does not fit.
    Outcome ApplyRecord(std::string_view stepName, EditRecord record);

    // --- Markers

    // Puts another list of markers in, as an edit whose undo step "Marker" holds markers alone;
    // playing and recording go on. With kGoesOn, as in a drag, all up to the next EndMarkerEdit()
    // is one edit, which every other edit ends, too. A list that ends as it began is none.
    enum class MarkerEditing { kDone, kGoesOn };
    void SetMarkers(MarkerList markers, MarkerEditing editing = MarkerEditing::kDone);
    void EndMarkerEdit();

    // --- Recording

    // Stops playing, begins an edit, with an undo step when the sound has data, and starts the
    // input device.
    Outcome StartRecording();
    // Inserts what was recorded at this frame; the markers stay where they are. Fails, with the
    // sound and the history unchanged, when nothing was recorded.
    Outcome StopRecording(std::uint32_t cursorFrame);

    // --- Recovery

    // Into an empty document; marks nothing modified.
    Outcome RestoreFile(const FileOrigin& origin, const std::filesystem::path& copy);
    Outcome RestoreSound(sonavel::Sound&& sound);
    void RestoreName(const std::filesystem::path& path, std::string_view title,
                     const std::optional<FileIdentity>& identity);
    void RestoreOrigin(ImportOrigin origin, std::vector<ForeignChunk> chunks);
    void RestoreTags(std::vector<SoundTag> tags) { extras_.tags = std::move(tags); }
    // All of the other but its file and its history, to be worked on as a copy.
    Outcome TakeCopyOf(const CSoundDoc& other);

    // --- Preview

    // Fills the preview sound from floating-point samples, one a frame for mono and left/right
    // pairs for stereo; `lengthBytes` divided by the preview's channel count gives the frames, 0
    // standing for the sound's frame count. Samples are truncated to whole numbers, unless the
    // preview holds floats; missing ones are silence. Done once it is filled; the preview itself
    // says why it does not play. kComputedStereo: of 16 bits, or of floats where the sound holds
    // them.
    enum class PreviewFormat { kOfTheSound, kComputedStereo };
    enum class PreviewPlay { kNo, kYes };
    Outcome MakePreview(std::span<const float> samples, PreviewPlay play, std::uint64_t lengthBytes,
                        PreviewFormat format);
    // Stops and empties the preview sound, which no longer fits a sound that an effect has changed.
    void ClearPreview();
    // What a new document made from the preview is titled with, before its number; empty until one
    // was made.
    const std::string& PreviewTitlePrefix() const { return previewTitlePrefix_; }
    void SetPreviewTitlePrefix(std::string_view prefix) { previewTitlePrefix_ = prefix; }

  private:
    friend class SoundEdit;

    enum class Samples { kCopied, kMovedLater };
    Result<SoundEdit> MakeEdit(std::string_view stepName, const EditPlan& plan, Samples samples);
    SoundEdit PlanEdit(SoundEdit::Storing storing, std::string stepName, const EditPlan& plan);
    bool KeepFor(SoundEdit::Storing storing, StoredRecord& record);
    void StoreInHistory(SoundEdit::Storing storing, std::string_view stepName, StoredRecord record);
    void TellHistory(HistoryChange::Kind kind, std::string_view stepName = {},
                     const EditRecord* record = nullptr);
    void ShowGivenUpSteps();
    void LimitHistory();
    Outcome ReadFile(const std::filesystem::path& path, std::string_view extension);
    Outcome WriteFile(const std::filesystem::path& path, std::string_view extension);
    Outcome SaveLikeOrigin();
    Outcome AskAboutLosses();
    bool IsOrigin(const std::filesystem::path& path) const { return origin_ && path == path_; }
    SaveAsChoice SaveAsItIs(const std::filesystem::path& path) const;
    Outcome ConvertForSave(const SaveAsChoice& choice);
    void TakePath(const std::filesystem::path& path);
    void NoteFileWritten();
    FileHolds WrittenFileHolds() const;
    Outcome ReadImport(const std::filesystem::path& path, const ImportChoice& choice);
    // Failed for the sound's own last error where it left one.
    Outcome FailedAsSound(std::string_view fallback) const;
    void StopPlaying();
    void TellChanged(std::uint32_t firstChangedFrame);
    void TellTitleOrModified();
    void TellWaiting(DocumentObserver::Waiting waiting);
    void ForgetHistory();

    HostServices services_;
    int changesUnderWay_ = 0;
    std::vector<DocumentObserver*> observers_;
    ProfileText optionsText_;
    DocumentOptions options_;
    UndoHistory history_;
    HistoryListener* historyListener_ = nullptr;
    StepScript steps_;
    CWavePlayer sound_;
    CWavePlayer preview_;
    std::string previewTitlePrefix_;
    std::filesystem::path path_;
    std::string title_;
    std::optional<FileOrigin> file_;
    FileHolds fileHolds_ = FileHolds::kLess;
    std::optional<ImportOrigin> origin_;
    SoundExtras extras_;  // without markers, which are the sound's
    std::optional<SoundEdit> recordingEdit_;
    std::optional<MarkerList> markersBefore_;  // the marker edit that goes on
};

}  // namespace sonavel
