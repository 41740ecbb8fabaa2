#include "view/commands/place_commands.h"

#include <algorithm>
#include <optional>

#include "platform/code_page_949.h"
#include "sound/time_text.h"
#include "view/commands/edit_commands.h"
#include "view/commands/marker_commands.h"
#include "view/commands/transport.h"
#include "view/input/cursor_moves.h"
#include "view/refusals.h"

namespace sonavel {
namespace {

std::optional<std::uint32_t> MarkerBehind(const CSoundView& view, std::uint32_t frame) {
    std::optional<std::uint32_t> least;
    for (const Marker& marker : view.Sound().Markers().All())
        if (marker.position > frame && marker.position <= view.FrameCount())
            least = std::min(least.value_or(marker.position), marker.position);
    return least;
}

std::optional<std::uint32_t> MarkerBefore(const CSoundView& view, std::uint32_t frame) {
    std::optional<std::uint32_t> greatest;
    for (const Marker& marker : view.Sound().Markers().All())
        if (marker.position < frame)
            greatest = std::max(greatest.value_or(marker.position), marker.position);
    return greatest;
}

const Marker* ChosenMarker(const CSoundView& view) {
    return view.Sound().Markers().Find(ChosenMarkerId(view));
}

Selection RegionOf(const CSoundView& view, const Marker& marker) {
    const std::uint32_t most = 0xFFFFFFFF - marker.position;
    const Selection region{marker.position, marker.position + std::min(marker.length, most)};
    return marker.length > 0
               ? region.ClampedTo(view.FrameCount())
               : Selection{marker.position,
                           MarkerBehind(view, marker.position).value_or(view.FrameCount())};
}

std::string_view WithoutBrackets(std::string_view text) {
    text = text.substr(0, text.find('('));
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

struct TwoPlaces {
    std::string_view first, second;
};

std::optional<TwoPlaces> Parted(std::string_view text) {
    for (const std::string_view sign : {" - ", " to ", "..", "\xE2\x80\x93"}) {
        const std::size_t at = text.find(sign);
        if (at != std::string_view::npos)
            return TwoPlaces{text.substr(0, at), text.substr(at + sign.size())};
    }
    return std::nullopt;
}

BareNumber BareOf(const CSoundView& view) {
    return view.Settings().statusFormat == StatusFormat::kSample ? BareNumber::kFrames
                                                                 : BareNumber::kSeconds;
}

std::optional<std::uint32_t> PlaceOf(const CSoundView& view, std::string_view text,
                                     std::uint32_t here) {
    const auto time = ParseTime(text, view.Sound().GetSamplesPerSecond(), BareOf(view));
    if (!time) return std::nullopt;
    const std::int64_t frame = time->from == TimeFrom::kHere ? here + time->frames : time->frames;
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(frame, 0, std::int64_t{view.FrameCount()}));
}

Outcome NotAPlace(std::string_view text) {
    return Failed("\"" + std::string(text) +
                  "\" is no place; 1:02:03.5, 62.5s, 441000# and +5 are.");
}

}  // namespace

Outcome GoToNextMarker(CSoundView& view) {
    const auto frame = MarkerBehind(view, view.State().Cursor());
    return frame ? GoToFrame(view, *frame) : Failed("There is no marker behind the cursor.");
}

Outcome GoToPreviousMarker(CSoundView& view) {
    const auto frame = MarkerBefore(view, view.State().Cursor());
    return frame ? GoToFrame(view, *frame) : Failed("There is no marker before the cursor.");
}

Outcome SelectToNextMarker(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const std::uint32_t cursor = view.State().Cursor();
    const Selection now =
        view.State().HasSelection() ? view.State().GetSelection() : Selection{cursor, cursor};
    const std::uint32_t end = MarkerBehind(view, now.end).value_or(view.FrameCount());
    view.State().SetSelection(now.start, end);
    view.Zoom().ScrollToShow(end);
    return Done();
}

Outcome SelectLastAgain(CSoundView& view) {
    if (!view.State().BringSelectionBack()) return Failed("There was no other selection.");
    view.State().SetCursor(view.State().GetSelection().start);
    view.Zoom().ScrollToShow(view.State().GetSelection().start);
    return Done();
}

Outcome TurnRound(CSoundView& view, ViewSwitch which) {
    return view.Turn(which, view.Settings().IsOn(which) ? Turned::kOff : Turned::kOn);
}

Outcome GoToPreviousZoom(CSoundView& view) {
    return DoneIf(view.Zoom().Back(), "There is no zoom before this one.");
}

Outcome GoToNextZoom(CSoundView& view) {
    return DoneIf(view.Zoom().Forward(), "There is no zoom after this one.");
}

Outcome ZoomSelection(CSoundView& view) {
    view.Zoom().ToRange(view.State().GetSelection().start, view.State().GetSelection().end);
    return Done();
}

Outcome SwitchOverview(CSoundView& view) {
    return StoreOverview(
        view, view.Pictures().ShowsOverview() ? OverviewOf::kNoSound : OverviewOf::kAllSounds);
}

Outcome GoToTyped(CSoundView& view, std::string_view text) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const std::string_view typed = WithoutBrackets(text);
    const auto parts = Parted(typed);
    if (!parts) {
        const auto place = PlaceOf(view, typed, view.State().Cursor());
        return place ? GoToFrame(view, *place) : NotAPlace(typed);
    }
    const auto start = PlaceOf(view, parts->first, view.State().Cursor());
    if (!start) return NotAPlace(parts->first);
    const auto end = PlaceOf(view, parts->second, *start);
    if (!end) return NotAPlace(parts->second);
    view.State().SetSelection(*start, *end);
    view.State().SetCursor(view.State().GetSelection().start);
    view.Zoom().ScrollToShow(view.State().GetSelection().start);
    return Done();
}

// --- The chosen marker

std::uint32_t ChosenMarkerId(const CSoundView& view) {
    const auto chosen = view.State().ChosenMarker();
    if (chosen && view.Sound().Markers().Find(*chosen)) return *chosen;
    return NearestMarkerId(view, view.State().Cursor());
}

Outcome SelectMarkerRegion(CSoundView& view) {
    const Marker* marker = ChosenMarker(view);
    if (!marker) return Failed(refusal::kNoMarkers);
    const std::uint32_t id = marker->id;
    const Selection region = RegionOf(view, *marker);
    view.State().SetSelection(region.start, region.end);
    view.State().SetCursor(region.start);
    view.State().ChooseMarker(id);
    return Done();
}

Outcome PlayMarkerRegion(CSoundView& view) {
    if (Outcome selected = SelectMarkerRegion(view); !selected) return selected;
    return Playback(view);
}

Outcome MakeRegionFromSelection(CSoundView& view) {
    const Marker* marker = ChosenMarker(view);
    if (!marker) return Failed(refusal::kNoMarkers);
    if (!view.State().HasSelection()) return Failed(refusal::kNoSelection);
    const Selection selection = view.State().GetSelection();
    return SetMarker(view, marker->id, selection.start, "", selection.Frames());
}

Outcome RemoveChosenMarker(CSoundView& view) {
    const Marker* marker = ChosenMarker(view);
    return marker ? RemoveMarker(view, marker->id) : Failed(refusal::kNoMarkers);
}

Outcome DeleteChosen(CSoundView& view) {
    const auto chosen = view.State().ChosenMarker();
    if (!chosen || !view.Sound().Markers().Find(*chosen)) return DeleteSelection(view);
    // The next press must not take whichever marker is nearest then.
    view.State().ForgetMarker();
    return RemoveMarker(view, *chosen);
}

Outcome AskNameOfNewMarker(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const std::uint32_t frame = view.Playing().PlayFrame().value_or(view.State().Cursor());
    view.Repaint().Window().OnNameWanted({.id = 0, .frame = frame, .name = {}});
    return Done();
}

Outcome AskNameOfMarker(CSoundView& view) {
    const Marker* marker = ChosenMarker(view);
    if (!marker) return Failed(refusal::kNoMarkers);
    view.Zoom().ScrollToShow(marker->position);
    view.Repaint().Window().OnNameWanted(
        {.id = marker->id, .frame = marker->position, .name = DisplayText(marker->name)});
    return Done();
}

}  // namespace sonavel
