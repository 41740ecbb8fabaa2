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

}  // namespace

MarkerList WithPausesMarked(const Sound& sound, FrameRange range, const PauseRule& rule,
                            PauseMarks marks) {
    const PausesFound found = FindPauses(sound, range, rule);
    MarkerList markers = sound.Markers();
    int number = 0;
    if (marks == PauseMarks::kMarkersAtPauses)
        for (const FrameRange& pause : found.pauses)
            markers.Add(pause.start + pause.Frames() / 2, "Pause " + std::to_string(++number), 0);
    else
        for (const FrameRange& one : found.sounds)
            markers.Add(one.start, "Sound " + std::to_string(++number), one.Frames());
    return markers;
}

Outcome MarkPauses(CSoundView& view, const PauseRule& rule, PauseMarks marks) try {
    if (view.FrameCount() == 0) return Failed(kNoSound);
    const Selection selection = view.State().GetSelection();
    const FrameRange range = RangeToWorkOn(selection.start, selection.end, view.FrameCount());
    PutMarkers(view, WithPausesMarked(view.Sound(), range, rule, marks));
    return Done();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
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
        {view.Sound().GetSamplesPerSecond(), DisplayText(view.Document().Title())});
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
