#include "view/marker_commands.h"

#include <algorithm>

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

void MarkersChanged(CSoundView& view) {
    view.Document().SetModified(true);
    view.Invalidate(ViewArea::kMarkerStrip);
    view.Invalidate(ViewArea::kWaveform);
}

bool Apply(CSoundView& view, const MarkerEdit& edit) {
    switch (edit.kind) {
        case MarkerEdit::Kind::kAdd:
            return AddMarker(view, edit.position, edit.name, edit.length) != 0;
        case MarkerEdit::Kind::kSet:
            return SetMarker(view, edit.id, edit.position, edit.name, edit.length);
        case MarkerEdit::Kind::kDelete:
            return RemoveMarker(view, edit.id);
    }
    return false;
}

bool RunDialog(CSoundView& view, MarkerDialogRequest::Start start, std::uint32_t id) {
    if (view.FrameCount() == 0) return view.Refuse(kNoSound);
    MarkerDialogRequest request;
    request.start = start;
    request.markerId = id;
    request.markers = view.Sound().Markers();
    request.frameCount = view.FrameCount();
    request.samplesPerSecond = view.Sound().GetSamplesPerSecond();
    request.newPosition = view.HasSelection() ? view.GetSelection().start : view.Cursor();
    request.newLength = view.GetSelection().Frames();
    const std::optional<std::vector<MarkerEdit>> edits = view.Dialogs().EditMarkers(request);
    if (!edits) return view.Refuse(failure::kCancelled);
    bool done = true;
    for (const MarkerEdit& edit : *edits) done = Apply(view, edit) && done;
    return done;
}

}  // namespace

bool DropMarker(CSoundView& view) {
    if (view.FrameCount() == 0) return view.Refuse(kNoSound);
    AddMarker(view, view.Cursor(), "", 0);
    return true;
}

std::uint32_t AddMarker(CSoundView& view, std::uint32_t position, std::string_view name,
                        std::uint32_t length) {
    const std::uint32_t start = ClampedPosition(view, position);
    const std::uint32_t id =
        view.Sound().Markers().Add(start, name, ClampedLength(view, start, length));
    MarkersChanged(view);
    return id;
}

bool SetMarker(CSoundView& view, std::uint32_t id, std::uint32_t position, std::string_view name,
               std::uint32_t length) {
    const std::uint32_t start = ClampedPosition(view, position);
    if (!view.Sound().Markers().Set(id, start, name, ClampedLength(view, start, length)))
        return view.Refuse(kNoSuchMarker);
    MarkersChanged(view);
    return true;
}

bool RemoveMarker(CSoundView& view, std::uint32_t id) {
    if (!view.Sound().Markers().Remove(id)) return view.Refuse(kNoSuchMarker);
    MarkersChanged(view);
    return true;
}

bool EditMarkersInDialog(CSoundView& view) {
    return RunDialog(view, MarkerDialogRequest::Start::kList, NearestMarkerId(view, view.Cursor()));
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
