#include "view/commands/marker_commands.h"

#include <algorithm>
#include <span>
#include <utility>

#include "sound/failure_texts.h"

namespace sonavel {
namespace {

constexpr char kNoSound[] = "The document has no sound.";
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

// All of them as one change, or none.
bool CarryOut(CSoundView& view, std::span<const MarkerEdit> edits) {
    MarkerList markers = view.Sound().Markers();
    for (const MarkerEdit& edit : edits)
        if (!CarryOut(view, edit, markers)) return view.Refuse(kNoSuchMarker);
    Change(view, std::move(markers));
    return true;
}

bool RunDialog(CSoundView& view, MarkerDialogRequest::Start start, std::uint32_t id) {
    if (view.FrameCount() == 0) return view.Refuse(kNoSound);
    MarkerDialogRequest request;
    request.start = start;
    request.markerId = id;
    request.markers = view.Sound().Markers();
    request.frameCount = view.FrameCount();
    request.samplesPerSecond = view.Sound().GetSamplesPerSecond();
    request.newPosition =
        view.State().HasSelection() ? view.State().GetSelection().start : view.State().Cursor();
    request.newLength = view.State().GetSelection().Frames();
    const std::optional<std::vector<MarkerEdit>> edits = view.Dialogs().EditMarkers(request);
    if (!edits) return view.Refuse(failure::kCancelled);
    return CarryOut(view, *edits);
}

}  // namespace

bool DropMarker(CSoundView& view) {
    if (view.FrameCount() == 0) return view.Refuse(kNoSound);
    AddMarker(view, view.State().Cursor(), "", 0);
    return true;
}

std::uint32_t AddMarker(CSoundView& view, std::uint32_t position, std::string_view name,
                        std::uint32_t length) {
    const std::uint32_t start = ClampedPosition(view, position);
    MarkerList markers = view.Sound().Markers();
    const std::uint32_t id = markers.Add(start, name, ClampedLength(view, start, length));
    Change(view, std::move(markers));
    return id;
}

bool SetMarker(CSoundView& view, std::uint32_t id, std::uint32_t position, std::string_view name,
               std::uint32_t length) {
    const MarkerEdit edit = {MarkerEdit::Kind::kSet, id, position, std::string(name), length};
    return CarryOut(view, {&edit, 1});
}

bool RemoveMarker(CSoundView& view, std::uint32_t id) {
    const MarkerEdit edit = {MarkerEdit::Kind::kDelete, id, 0, {}, 0};
    return CarryOut(view, {&edit, 1});
}

void DragMarker(CSoundView& view, std::uint32_t id, std::uint32_t position) {
    MarkerList markers = view.Sound().Markers();
    const Marker* marker = markers.Find(id);
    if (!marker || marker->position == position) return;
    const std::uint32_t start = ClampedPosition(view, position);
    markers.Set(id, start, "", ClampedLength(view, start, marker->length));
    Change(view, std::move(markers), CSoundDoc::MarkerEditing::kGoesOn);
}

bool EditMarkersInDialog(CSoundView& view) {
    return RunDialog(view, MarkerDialogRequest::Start::kList,
                     NearestMarkerId(view, view.State().Cursor()));
}

bool AddMarkerInDialog(CSoundView& view) {
    return RunDialog(view, MarkerDialogRequest::Start::kAdd, 0);
}

bool EditMarkerInDialog(CSoundView& view, std::uint32_t id) {
    return RunDialog(view, MarkerDialogRequest::Start::kEdit, id);
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
