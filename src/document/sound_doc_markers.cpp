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
    if (options_.saveUndo)
        history_.Add({.name = "Marker",
                      .sound = {{}, {}, std::move(*before)},
                      .holds = UndoStep::Holds::kMarkers});
    else
        history_.DiscardRedo();
    SetModified(true);
}

}  // namespace sonavel
