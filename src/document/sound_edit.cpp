#include "document/sound_edit.h"

#include <new>
#include <utility>

#include "document/sound_doc.h"

namespace sonavel {

SoundEdit::SoundEdit(CSoundDoc& document, Storing storing, std::string stepName,
                     StoredRecord record)
    : document_(&document),
      underWay_(document.changesUnderWay_),
      storing_(storing),
      stepName_(std::move(stepName)),
      stored_(std::move(record)),
      bytesBefore_(document.Sound().GetDataSize()) {}

void SoundEdit::ReplaceSound(Sound&& result) {
    Sound before = document_->Sound().Exchange(std::move(result));
    if (stored_.Record().reach != EditReach::kEverything) return;
    PcmFormat none;
    ExchangePiece(before, 0, before.GetDataSize(), stored_.Record().samples, none);
}

void SoundEdit::PlanAnew(const EditPlan& plan) {
    *this = document_->PlanEdit(storing_, std::move(stepName_), plan);
}

void SoundEdit::TakeBack() {
    CWave& sound = document_->Sound();
    EditRecord& record = stored_.Record();
    NoteResult(record, bytesBefore_, sound);
    if (stored_.MoveIntoMemory() && Fits(record, sound)) [[maybe_unused]]
        const Outcome back = Exchange(record, sound);
}

void SoundEdit::Commit(std::uint32_t firstChangedFrame) {
    NoteResult(stored_.Record(), bytesBefore_, document_->Sound());
    document_->StoreInHistory(storing_, stepName_, std::move(stored_));
    underWay_.End();
    document_->NotifyChanged(firstChangedFrame);
}

void SoundEdit::CommitSurely(std::uint32_t firstChangedFrame) {
    try {
        return Commit(firstChangedFrame);
    } catch (const std::bad_alloc&) {
        document_->ForgetHistory();
    }
    underWay_.End();
    document_->NotifyChanged(firstChangedFrame);
}

}  // namespace sonavel
