#include "document/sound_edit.h"

#include <utility>

#include "document/sound_doc.h"

namespace sonavel {

SoundEdit::SoundEdit(CSoundDoc& document, std::optional<UndoStep> step)
    : document_(&document), step_(std::move(step)) {}

void SoundEdit::Commit(std::uint32_t firstChangedFrame) {
    UndoHistory& history = document_->History();
    if (step_)
        history.Add(std::move(*step_));
    else
        history.DiscardRedo();
    document_->NotifyChanged(firstChangedFrame);
}

void SoundEdit::TakeMarkers() {
    if (step_) step_->sound.Markers() = document_->Sound().Markers();
}

}  // namespace sonavel
