#include "view/commands/label_commands.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

#include "exchange/label_files.h"
#include "exchange/sound_extras.h"
#include "platform/code_page_949.h"
#include "view/commands/edit_commands.h"
#include "view/refusals.h"

namespace sonavel {
namespace {

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

PausesFound PausesOf(const CSoundView& view, const PauseRule& rule) {
    const Selection selection = view.State().GetSelection();
    const FrameRange range = RangeToWorkOn(selection.start, selection.end, view.FrameCount());
    return FindPauses(view.Sound(), range, rule);
}

MarkerList WithPausesMarked(const CSoundView& view, MarkerList markers, const PauseRule& rule,
                            PauseMarks marks) {
    const PausesFound found = PausesOf(view, rule);
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

PausesGoing FindPausesGoing(const CSoundView& view, const PauseRule& rule, std::uint32_t kept) {
    PausesGoing going;
    for (const FrameRange& pause : PausesOf(view, rule).pauses) {
        if (pause.Frames() <= kept) continue;
        const FrameRange gone{pause.start + kept / 2, pause.end - (kept - kept / 2)};
        going.ranges.push_back(gone);
        going.frames += gone.Frames();
    }
    return going;
}

void PauseProposal::Put(MarkerList markers) {
    view_.Document().SetMarkers(std::move(markers), CSoundDoc::MarkerEditing::kGoesOn);
    view_.Repaint().Area(ViewArea::kMarkerStrip);
    view_.Repaint().Area(ViewArea::kWaveform);
}

Result<PausesGoing> PauseProposal::ShowGoing(const PauseRule& rule, std::uint32_t kept) try {
    PausesGoing going = FindPausesGoing(view_, rule, kept);
    MarkerList markers = before_;
    int number = 0;
    for (const FrameRange& range : going.ranges)
        markers.Add(range.start, "Pause " + std::to_string(++number), range.Frames());
    Put(std::move(markers));
    return going;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Result<std::size_t> PauseProposal::Show(const PauseRule& rule, PauseMarks marks) try {
    MarkerList markers = WithPausesMarked(view_, before_, rule, marks);
    const std::size_t added = markers.Count() - before_.Count();
    Put(std::move(markers));
    return added;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

PauseProposal::PauseProposal(CSoundView& view) : view_(view), before_(view.Sound().Markers()) {
    view_.Document().EndMarkerEdit();
}

PauseProposal::~PauseProposal() {
    if (isKept_) return;
    Put(std::move(before_));
    view_.Document().EndMarkerEdit();
}

void PauseProposal::Keep() {
    isKept_ = true;
    view_.Document().EndMarkerEdit();
}

Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    PauseProposal proposal(view);
    const Result<std::size_t> shown = proposal.Show(rule, marks);
    if (!shown) return shown.Ended();
    proposal.Keep();
    return Done();
}

Outcome RemovePauses(CSoundView& view, const PauseRule& rule, std::uint32_t kept) try {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const PausesGoing going = FindPausesGoing(view, rule, kept);
    if (going.ranges.empty()) return Failed("There is no pause as long.");
    return RemoveRanges(view, going.ranges);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

Outcome ImportMarkers(CSoundView& view, const std::filesystem::path& path) try {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
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
    if (view.Sound().Markers().Empty()) return Failed(refusal::kNoMarkers);
    return WriteLabelFile(
        path, ChaptersOf(view.Sound().Markers()),
        {std::max(view.Sound().GetSamplesPerSecond(), 1U), DisplayText(view.Document().Title())});
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
