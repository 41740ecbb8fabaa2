#include "view/input/cursor_moves.h"

#include <algorithm>
#include <optional>

#include "sound/sample_types.h"
#include "view/refusals.h"

namespace sonavel {
namespace {

// One move by a step of whole frames, worked out before anything changes. Positions are signed here
// because a move left may pass the start.
struct CursorStep {
    std::int64_t frames;          // of the sound
    std::int64_t virtualWidth;    // pixels
    std::int64_t step;            // frames
    std::int64_t scrollDistance;  // pixels to scroll by when the cursor leaves the window
};

CursorStep StepOf(const CSoundView& view, int pixels) {
    const std::int64_t frames = view.FrameCount();
    const std::int64_t width = view.Zoom().Horizontal().maximum;
    const std::int64_t step = width > 0 ? pixels * frames / width : 0;
    return {frames, width, step, 3 * step * width / frames};
}

// The cursor's place in the window as the moves see it, one pixel left of where it is drawn.
std::int64_t PlaceInWindow(const CSoundView& view, const CursorStep& step, std::int64_t cursor) {
    const std::int64_t x =
        cursor * step.virtualWidth / step.frames - view.Zoom().Horizontal().position - 1;
    return x == -1 ? 0 : x;
}

std::optional<FrameRange> ShortestRegionAround(const MarkerList& markers, std::uint32_t frame) {
    std::optional<FrameRange> shortest;
    for (const Marker& marker : markers.All()) {
        const std::uint32_t most = 0xFFFFFFFF - marker.position;
        const FrameRange region{marker.position, marker.position + std::min(marker.length, most)};
        if (region.Contains(frame) && (!shortest || region.Frames() < shortest->Frames()))
            shortest = region;
    }
    return shortest;
}

}  // namespace

Outcome MoveCursorLeft(CSoundView& view, int pixels, MoveMode mode) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const CursorStep step = StepOf(view, pixels);
    std::int64_t cursor = std::int64_t{view.State().Cursor()} - step.step;
    if (PlaceInWindow(view, step, cursor) < 0)
        view.Zoom().ScrollHorizontallyTo(view.Zoom().Horizontal().position - step.scrollDistance);
    // Intended: a move past the start stops at frame 1; Start alone leads to 0.
    if (cursor < 0) cursor = 1;
    const auto target = static_cast<std::uint32_t>(cursor);
    view.State().SetCursor(target);
    if (mode == MoveMode::kCollapse)
        view.State().SetSelection(target, target);
    else if (target <= view.State().GetSelectionEnds().start)
        view.State().SetSelectionStart(target);
    return Done();
}

Outcome MoveCursorRight(CSoundView& view, int pixels, MoveMode mode) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const CursorStep step = StepOf(view, pixels);
    const std::int64_t cursor =
        std::min(std::int64_t{view.State().Cursor()} + step.step, std::int64_t{step.frames});
    if (PlaceInWindow(view, step, cursor) > view.State().WaveformWidth())
        view.Zoom().ScrollHorizontallyTo(view.Zoom().Horizontal().position + step.scrollDistance);
    const auto target = static_cast<std::uint32_t>(cursor);
    view.State().SetCursor(target);
    if (mode == MoveMode::kCollapse) view.State().SetSelection(target, target);
    // Intended: extending to the right moves the start, as extending to the left does; the end is
    // the fixed one of the two.
    else if (target > view.State().GetSelectionEnds().start)
        view.State().SetSelectionStart(target);
    return Done();
}

Outcome MoveCursorToStart(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    view.State().SetCursor(0);
    view.State().SetSelection(0, 0);
    view.Zoom().ScrollHorizontallyTo(0);
    view.Repaint().Area(ViewArea::kWaveform);
    return Done();
}

Outcome MoveCursorToEnd(CSoundView& view) {
    const std::uint32_t frames = view.FrameCount();
    if (frames == 0) return Failed(refusal::kNoSound);
    view.State().SetCursor(frames);
    view.State().SetSelection(0, 0);
    const std::uint64_t bytesPerFrame = 2 * SampleBytesOf(view.Sound().GetBits());
    view.Zoom().ScrollToPlayPosition(frames * bytesPerFrame);
    view.Repaint().TimeAreas();
    return Done();
}

Outcome SelectToStart(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    view.State().SetSelection(
        0, view.State().HasSelection() ? view.State().GetSelection().end : view.State().Cursor());
    view.State().SetCursor(0);
    view.Zoom().ScrollToShow(0);
    return Done();
}

Outcome SelectToEnd(CSoundView& view) {
    const std::uint32_t frames = view.FrameCount();
    if (frames == 0) return Failed(refusal::kNoSound);
    view.State().SetSelection(
        view.State().HasSelection() ? view.State().GetSelection().start : view.State().Cursor(),
        frames);
    view.State().SetCursor(frames);
    view.Zoom().ScrollToShow(frames);
    return Done();
}

Outcome SelectAll(CSoundView& view) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    view.State().SetSelection(0, view.FrameCount());
    view.Repaint().Area(ViewArea::kAll);
    return Done();
}

Outcome SelectBetweenMarkers(CSoundView& view, std::uint32_t frame) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    if (const auto region = ShortestRegionAround(view.Sound().Markers(), frame)) {
        view.State().SetSelection(region->start, region->end);
        return Done();
    }
    const std::uint32_t end = std::min(view.Sound().GetMarkerAfter(frame), view.FrameCount());
    view.State().SetSelection(view.Sound().GetMarkerBefore(frame), end);
    return Done();
}

Outcome GoToFrame(CSoundView& view, std::uint32_t frame) {
    if (view.FrameCount() == 0) return Failed(refusal::kNoSound);
    const std::uint32_t target = std::min(frame, view.FrameCount());
    view.State().SetCursor(target);
    view.State().SetSelection(target, target);
    view.Zoom().ScrollToShow(target);
    return Done();
}

Outcome GoToCursor(CSoundView& view, const GoToChoice& choice) {
    if (choice.unit == GoToChoice::Unit::kFrame) return GoToFrame(view, choice.frame);
    const double frame = std::clamp(choice.seconds * view.Sound().GetSamplesPerSecond(), 0.0,
                                    double(view.FrameCount()));
    return GoToFrame(view, static_cast<std::uint32_t>(frame));
}

}  // namespace sonavel
