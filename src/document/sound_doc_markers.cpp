// Changes of the markers, each an edit of its own.
#include <utility>

#include "document/sound_doc.h"

namespace sonavel {

void CSoundDoc::SetMarkers(MarkerList markers, MarkerEditing editing) {
    if (editing == MarkerEditing::kDone) EndMarkerEdit();
    if (!markersBefore_) markersBefore_ = sound_.Markers();
    sound_.Markers() = std::move(markers);
    if (editing == MarkerEditing::kDone) EndMarkerEdit();
}

void CSoundDoc::EndMarkerEdit() {
    std::optional<MarkerList> before = std::exchange(markersBefore_, std::nullopt);
    if (!before || *before == sound_.Markers()) return;
    const SoundEdit::Storing storing =
        options_.saveUndo ? SoundEdit::Storing::kStep : SoundEdit::Storing::kNoStep;
    EditRecord record{.reach = EditReach::kMarkers};
    record.markers = std::move(*before);
    StoreInHistory(storing, "Marker", std::move(record));
    SetModified(true);
}

}  // namespace sonavel
