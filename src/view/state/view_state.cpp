#include "view/state/view_state.h"

#include <algorithm>

namespace sonavel {

// --- Sizes

void ViewState::LayOut(const GeometryRequest& request) {
    client_ = request.client;
    geometry_ = ViewGeometry::Layout(request);
}

void ViewState::Show(const GeometryRequest& request, OpeningZoom opening) {
    LayOut(request);
    shown_ = true;
    zoom_.Restart();
    zoom_.ToDefault(opening);
    notes_.Area(ViewArea::kAll);
}

void ViewState::Resize(const GeometryRequest& request) {
    LayOut(request);
    zoom_.Resize();
    notes_.Area(ViewArea::kAll);
}

// --- Selection and cursor

void ViewState::SetSelection(std::uint32_t start, std::uint32_t end) {
    const Selection range = RangeBetween(start, end).ClampedTo(sound_.GetFrameCount());
    pastSelections_.Change(GetSelection(), range);
    StoreSelection({range.start, range.end});
}

void ViewState::SetSelectionStart(std::uint32_t frame) {
    StoreSelection({std::min(frame, sound_.GetFrameCount()), selectionEnds_.end});
}

void ViewState::StoreSelection(const SelectionEnds& ends) {
    if (ends == selectionEnds_) return;
    const Selection before = GetSelection();
    chosenMarker_.reset();
    selectionEnds_ = ends;
    NoteSelectionChange(before, GetSelection());
    notes_.Window().OnSelectionChanged();
}

void ViewState::SetCursor(std::uint32_t frame) {
    const std::uint32_t target = std::min(frame, sound_.GetFrameCount());
    if (target == cursor_) return;
    chosenMarker_.reset();
    NoteFrames(cursor_, cursor_);
    cursor_ = target;
    NoteFrames(cursor_, cursor_);
    notes_.Window().OnSelectionChanged();
}

bool ViewState::BringSelectionBack() {
    const auto last = pastSelections_.Last(GetSelection());
    if (!last) return false;
    const Selection range = last->ClampedTo(sound_.GetFrameCount());
    StoreSelection({range.start, range.end});
    return true;
}

void ViewState::ChooseMarker(std::uint32_t id) {
    chosenMarker_ = id;
    notes_.Area(ViewArea::kMarkerStrip);
    notes_.Window().OnSelectionChanged();
}

void ViewState::ClampToSound() {
    const std::uint32_t frames = sound_.GetFrameCount();
    const SelectionEnds clamped = {std::min(selectionEnds_.start, frames),
                                   std::min(selectionEnds_.end, frames)};
    const std::uint32_t cursor = std::min(cursor_, frames);
    const bool changed = clamped != selectionEnds_ || cursor != cursor_;
    selectionEnds_ = clamped;
    cursor_ = cursor;
    if (changed) notes_.Window().OnSelectionChanged();
}

void ViewState::NoteFrames(std::uint32_t a, std::uint32_t b) const {
    notes_.Frames(geometry_, zoom_.Pixels(), a, b);
}

void ViewState::NoteSelectionChange(const Selection& before, const Selection& after) const {
    if (before.IsEmpty() && after.IsEmpty()) return;
    if (before.IsEmpty() || after.IsEmpty()) {
        const Selection& shown = before.IsEmpty() ? after : before;
        NoteFrames(shown.start, shown.end);
        return;
    }
    if (before.start != after.start) NoteFrames(before.start, after.start);
    if (before.end != after.end) NoteFrames(before.end, after.end);
}

}  // namespace sonavel
