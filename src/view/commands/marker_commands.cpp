#include "view/commands/marker_commands.h"

#include "view/refusals.h"

#include <algorithm>
#include <utility>

namespace sonavel {
namespace {

constexpr char kNoSuchMarker[] = "There is no such marker.";

std::uint32_t ClampedPosition(const CSoundView& view, std::uint32_t position) {
    return std::min(position, view.FrameCount());
}

std::uint32_t ClampedLength(const CSoundView& view, std::uint32_t position, std::uint32_t length) {
    return std::min(length, view.FrameCount() - position);
}

void Change(CSoundView& view, MarkerList markers,
            CSoundDoc::MarkerEditing editing = CSoundDoc::MarkerEditing::kDone) {
    view.Document().SetMarkers(std::move(markers), editing);
    view.Repaint().Area(ViewArea::kMarkerStrip);
    view.Repaint().Area(ViewArea::kWaveform);
}

bool CarryOut(const CSoundView& view, const MarkerEdit& edit, MarkerList& markers) {
    const std::uint32_t start = ClampedPosition(view, edit.position);
    const std::uint32_t length = ClampedLength(view, start, edit.length);
    switch (edit.kind) {
        case MarkerEdit::Kind::kAdd:
            return markers.Add(start, edit.name, length) != 0;
        case MarkerEdit::Kind::kSet:
            return markers.Set(edit.id, start, edit.name, length);
        case MarkerEdit::Kind::kDelete:
            return markers.Remove(edit.id);
    }
    return false;
}

}  // namespace

Outcome DropMarker(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    AddMarker(view, view.State().Cursor(), "", 0);
    return Done();
}

std::uint32_t AddMarker(CSoundView& view, std::uint32_t position, std::string_view name,
                        std::uint32_t length) {
    const std::uint32_t start = ClampedPosition(view, position);
    MarkerList markers = view.Sound().Markers();
    const std::uint32_t id = markers.Add(start, name, ClampedLength(view, start, length));
    Change(view, std::move(markers));
    return id;
}

Outcome SetMarker(CSoundView& view, std::uint32_t id, std::uint32_t position, std::string_view name,
                  std::uint32_t length) {
    const MarkerEdit edit = {MarkerEdit::Kind::kSet, id, position, std::string(name), length};
    return EditMarkers(view, {&edit, 1});
}

Outcome RemoveMarker(CSoundView& view, std::uint32_t id) {
    const MarkerEdit edit = {MarkerEdit::Kind::kDelete, id, 0, {}, 0};
    return EditMarkers(view, {&edit, 1});
}

void DragMarker(CSoundView& view, std::uint32_t id, std::uint32_t position) {
    MarkerList markers = view.Sound().Markers();
    const Marker* marker = markers.Find(id);
    if (!marker || marker->position == position) return;
    const std::uint32_t start = ClampedPosition(view, position);
    markers.Set(id, start, "", ClampedLength(view, start, marker->length));
    Change(view, std::move(markers), CSoundDoc::MarkerEditing::kGoesOn);
}

Outcome EditMarkers(CSoundView& view, std::span<const MarkerEdit> edits) {
    MarkerList markers = view.Sound().Markers();
    for (const MarkerEdit& edit : edits)
        if (!CarryOut(view, edit, markers)) return Failed(kNoSuchMarker);
    Change(view, std::move(markers));
    return Done();
}

std::uint32_t NearestMarkerId(const CSoundView& view, std::uint32_t frame) {
    const std::vector<Marker>& markers = view.Sound().Markers().All();
    const auto distance = [frame](const Marker& marker) {
        return marker.position > frame ? marker.position - frame : frame - marker.position;
    };
    const auto nearest = std::min_element(
        markers.begin(), markers.end(),
        [&](const Marker& a, const Marker& b) { return distance(a) < distance(b); });
    return nearest == markers.end() ? 0 : nearest->id;
}

}  // namespace sonavel
