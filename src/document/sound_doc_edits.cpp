// How edits of a document begin and end, and Undo and Redo.
#include <utility>

#include "document/sound_doc.h"

namespace sonavel {

// --- Beginning an edit

Result<SoundEdit> CSoundDoc::BeginEdit(std::string_view stepName, const EditPlan& plan) {
    return MakeEdit(stepName, plan, Samples::kCopied);
}

Result<SoundEdit> CSoundDoc::BeginUnrecordedEdit(const EditPlan& plan) {
    return MakeEdit({}, plan, Samples::kCopied);
}

Result<SoundEdit> CSoundDoc::BeginReplacement(std::string_view stepName) {
    return MakeEdit(stepName, ReplacesEverything(), Samples::kMovedLater);
}

Result<SoundEdit> CSoundDoc::BeginUnrecordedReplacement() {
    return MakeEdit({}, ReplacesEverything(), Samples::kMovedLater);
}

Result<SoundEdit> CSoundDoc::MakeEdit(std::string_view stepName, const EditPlan& plan,
                                      Samples samples) {
    using enum SoundEdit::Storing;
    // What is recorded has the format that the sound had at the start.
    if (sound_.IsRecording()) return Failed("The sound cannot be changed while recording.");
    SoundEdit::Storing storing = options_.saveUndo && !stepName.empty() ? kStep : kNoStep;
    StoredRecord record(PlannedRecord(sound_, plan));
    if (samples == Samples::kCopied && !KeepFor(storing, record)) {
        if (history_.WasCancelled()) return Cancelled();
        if (!services_.prompts.AskOkCancel(
                "There is not enough memory for an undo step.\n"
                "Go on without one? This edit and those before it cannot be undone then.",
                "Sonavel"))
            return Failed("There is not enough memory for an undo step.");
        storing = kEndsTheHistory;
    }
    EndMarkerEdit();
    StopPlaying();
    // What is replaced as a whole is not written to.
    if (samples == Samples::kCopied)
        BlockOf(sound_).SettleLent(record.Record().startByte, record.Record().bytesKept);
    return SoundEdit(*this, storing, std::string(stepName), std::move(record));
}

Result<SoundEdit> CSoundDoc::BeginTakingOver(std::string_view stepName, EditRecord replaced) {
    using enum SoundEdit::Storing;
    if (sound_.IsRecording()) return Failed("The sound cannot be changed while recording.");
    const SoundEdit::Storing storing = options_.saveUndo && !stepName.empty() ? kStep : kNoStep;
    StoredRecord record(std::move(replaced));
    if (record.Record().reach != EditReach::kEverything && !KeepFor(storing, record)) {
        if (history_.WasCancelled()) return Cancelled();
        record = StoredRecord(PlannedRecord(sound_, ReplacesEverything()));
    }
    EndMarkerEdit();
    StopPlaying();
    return SoundEdit(*this, storing, std::string(stepName), std::move(record));
}

bool CSoundDoc::KeepFor(SoundEdit::Storing storing, StoredRecord& record) {
    const bool needed =
        storing == SoundEdit::Storing::kStep ||
        (storing == SoundEdit::Storing::kNoStep && history_.NeedsSamplesOf(record.Record()));
    return !needed || history_.Keep(record, sound_);
}

SoundEdit CSoundDoc::PlanEdit(SoundEdit::Storing storing, std::string stepName,
                              const EditPlan& plan) {
    StoredRecord record(PlannedRecord(sound_, plan));
    if (!KeepFor(storing, record)) storing = SoundEdit::Storing::kEndsTheHistory;
    BlockOf(sound_).SettleLent(record.Record().startByte, record.Record().bytesKept);
    return {*this, storing, std::move(stepName), std::move(record)};
}

// --- An edit that has come about

void CSoundDoc::StoreInHistory(SoundEdit::Storing storing, std::string_view stepName,
                               StoredRecord record) {
    const bool step = storing == SoundEdit::Storing::kStep;
    TellHistory(step ? HistoryChange::Kind::kStep : HistoryChange::Kind::kUnrecorded,
                step ? stepName : std::string_view(), &record.Record());
    if (step)
        history_.Add(MakeUndoStep(stepName, std::move(record)));
    else if (storing == SoundEdit::Storing::kNoStep)
        history_.Amend(std::move(record));
    else
        history_.Clear();
    ShowGivenUpSteps();
}

Outcome CSoundDoc::ApplyRecord(std::string_view stepName, EditRecord record) {
    if (sound_.IsRecording()) return Failed("The sound cannot be changed while recording.");
    if (record.reach != EditReach::kMarkers && !IsEditable(record.format))
        return Failed("The record does not fit the sound.");
    EndMarkerEdit();
    StopPlaying();
    if (Outcome exchanged = Exchange(record, sound_); !exchanged) return exchanged;
    const std::uint32_t firstFrame = FrameOfByte(sound_, record.startByte);
    const bool step = options_.saveUndo && !stepName.empty();
    StoreInHistory(step ? SoundEdit::Storing::kStep : SoundEdit::Storing::kNoStep, stepName,
                   std::move(record));
    NotifyChanged(firstFrame);
    return Done();
}

void CSoundDoc::TellHistory(HistoryChange::Kind kind, std::string_view stepName,
                            const EditRecord* record) {
    steps_.OnHistoryChange({kind, stepName, record}, sound_);
    if (historyListener_) historyListener_->OnHistoryChange({kind, stepName, record}, sound_);
}

void CSoundDoc::ShowGivenUpSteps() {
    if (history_.TakeGivenUpCount() > 0)
        services_.prompts.ShowStatus(
            "The oldest undo steps were given up: memory and disk have no more room for them.");
}

void CSoundDoc::ForgetHistory() {
    history_.Clear();
    markersBefore_.reset();
    TellHistory(HistoryChange::Kind::kForgotten);
}

// --- Undo and Redo

bool CSoundDoc::CanUndo() const {
    return options_.saveUndo && !sound_.IsRecording() && history_.CanUndo();
}

bool CSoundDoc::CanRedo() const {
    return options_.saveUndo && !sound_.IsRecording() && history_.CanRedo();
}

Outcome CSoundDoc::Undo() {
    EndMarkerEdit();
    if (!CanUndo()) return Failed("There is nothing to undo.");
    StopPlaying();
    ChangeUnderWay change(changesUnderWay_);
    if (Outcome undone = history_.Undo(sound_); !undone) return undone;
    TellHistory(HistoryChange::Kind::kUndone);
    change.End();
    NotifyChanged(0);
    ShowGivenUpSteps();
    return Done();
}

Outcome CSoundDoc::Redo() {
    EndMarkerEdit();
    if (!CanRedo()) return Failed("There is nothing to redo.");
    StopPlaying();
    ChangeUnderWay change(changesUnderWay_);
    if (Outcome redone = history_.Redo(sound_); !redone) return redone;
    TellHistory(HistoryChange::Kind::kRedone);
    change.End();
    NotifyChanged(0);
    ShowGivenUpSteps();
    return Done();
}

}  // namespace sonavel
