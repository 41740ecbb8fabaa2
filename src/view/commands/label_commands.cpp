#include "view/commands/label_commands.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "exchange/label_files.h"
#include "exchange/sound_extras.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr char kNoSound[] = "The document has no sound.";
constexpr char kNoMarkers[] = "The sound has no markers.";

void PutMarkers(CSoundView& view, MarkerList markers) {
    view.Document().SetMarkers(std::move(markers));
    view.Repaint().Area(ViewArea::kMarkerStrip);
    view.Repaint().Area(ViewArea::kWaveform);
}

bool HasMarker(const MarkerList& markers, const Marker& wanted) {
    return std::ranges::any_of(markers.All(), [&](const Marker& marker) {
        return marker.position == wanted.position && marker.length == wanted.length &&
               marker.name == wanted.name;
    });
}

std::string BehindEnd(std::size_t count) {
    return count == 1
               ? "A label behind the end of the sound was left out."
               : std::to_string(count) + " labels behind the end of the sound were left out.";
}

MarkerList WithPausesMarked(const CSoundView& view, MarkerList markers, const PauseRule& rule,
                            PauseMarks marks) {
    const Selection selection = view.State().GetSelection();
    const FrameRange range = RangeToWorkOn(selection.start, selection.end, view.FrameCount());
    const PausesFound found = FindPauses(view.Sound(), range, rule);
    int number = 0;
    if (marks == PauseMarks::kMarkersAtPauses)
        for (const FrameRange& pause : found.pauses)
            markers.Add(pause.start + pause.Frames() / 2, "Pause " + std::to_string(++number), 0);
    else
        for (const FrameRange& one : found.sounds)
            markers.Add(one.start, "Sound " + std::to_string(++number), one.Frames());
    return markers;
}

}  // namespace

Result<std::size_t> PauseProposal::Show(const PauseRule& rule, PauseMarks marks) try {
    MarkerList markers = WithPausesMarked(view_, before_, rule, marks);
    const std::size_t added = markers.Count() - before_.Count();
    view_.Document().SetMarkers(std::move(markers), CSoundDoc::MarkerEditing::kGoesOn);
    view_.Repaint().Area(ViewArea::kMarkerStrip);
    view_.Repaint().Area(ViewArea::kWaveform);
    return added;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

PauseProposal::PauseProposal(CSoundView& view) : view_(view), before_(view.Sound().Markers()) {
    view_.Document().EndMarkerEdit();
}

PauseProposal::~PauseProposal() {
    if (isKept_) return;
    view_.Document().SetMarkers(std::move(before_), CSoundDoc::MarkerEditing::kGoesOn);
    view_.Document().EndMarkerEdit();
    view_.Repaint().Area(ViewArea::kMarkerStrip);
    view_.Repaint().Area(ViewArea::kWaveform);
}

void PauseProposal::Keep() {
    isKept_ = true;
    view_.Document().EndMarkerEdit();
}

Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks) {
    if (view.FrameCount() == 0) return Failed(kNoSound);
    PauseProposal proposal(view);
    const Result<std::size_t> shown = proposal.Show(rule, marks);
    if (!shown) return shown.Ended();
    proposal.Keep();
    return Done();
}

Outcome ImportMarkers(CSoundView& view, const std::filesystem::path& path) try {
    if (view.FrameCount() == 0) return Failed(kNoSound);
    auto labels = ReadLabelFile(path, view.Sound().GetSamplesPerSecond());
    if (!labels) return labels.Ended();
    const std::size_t behind = std::erase_if(
        *labels, [&](const SoundChapter& label) { return label.startFrame > view.FrameCount(); });
    SoundExtras read;
    read.markers = *std::move(labels);
    MarkerList markers = view.Sound().Markers();
    const MarkerList added = MarkersOf(read, view.FrameCount());
    for (const Marker& marker : added.All())
        if (!HasMarker(view.Sound().Markers(), marker))
            markers.Add(marker.position, marker.name, marker.length);
    PutMarkers(view, std::move(markers));
    if (behind > 0) view.Document().Services().prompts.ShowMessage(BehindEnd(behind));
    return Done();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome ExportMarkers(CSoundView& view, const std::filesystem::path& path) try {
    if (view.Sound().Markers().Empty()) return Failed(kNoMarkers);
    return WriteLabelFile(
        path, ChaptersOf(view.Sound().Markers()),
        {std::max(view.Sound().GetSamplesPerSecond(), 1U), DisplayText(view.Document().Title())});
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
