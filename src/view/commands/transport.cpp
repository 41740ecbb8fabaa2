#include "view/commands/transport.h"

#include "view/refusals.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr char kNotStarted[] = "Playing could not be started.";
constexpr char kNotPlaying[] = "Nothing is playing.";

bool StartFromCursor(CSoundView& view) {
    const std::uint32_t cursor =
        view.State().Cursor() == view.FrameCount() ? 0 : view.State().Cursor();
    return view.Sound().Play(view.Sound().ByteOffset(cursor));
}

Outcome PlayFrames(CSoundView& view, std::uint32_t start, std::uint32_t end) {
    const std::uint32_t last = std::min(end, view.FrameCount());
    if (start >= last) return Failed("There is nothing to play there.");
    CWavePlayer& sound = view.Sound();
    return DoneIf(sound.PlayRange(sound.ByteOffset(start), sound.ByteOffset(last)), kNotStarted);
}

// What is heard before and after the point of a preview, in frames: one and a half seconds.
std::uint32_t PreviewMargin(const CSoundView& view) {
    const std::uint32_t rate = view.Sound().GetRate();
    return rate + rate / 2;
}

std::uint32_t Before(std::uint32_t frame, std::uint32_t distance) {
    return frame > distance ? frame - distance : 0;
}

std::uint32_t Behind(const CSoundView& view, std::uint32_t frame, std::uint32_t distance) {
    return static_cast<std::uint32_t>(
        std::min(std::uint64_t{frame} + distance, std::uint64_t{view.FrameCount()}));
}

}  // namespace

Outcome Playback(CSoundView& view) {
    if (!view.Sound().HasData()) return Failed(refusal::kNoSound);
    view.Playing().ClearPlayPosition();
    view.Sound().SetLooping(false);
    if (view.State().HasSelection())
        return PlayFrames(view, view.State().GetSelection().start, view.State().GetSelection().end);
    return DoneIf(StartFromCursor(view), kNotStarted);
}

Outcome PlayLooped(CSoundView& view) {
    if (!view.Sound().HasData()) return Failed(refusal::kNoSound);
    view.Playing().ClearPlayPosition();
    view.Sound().SetLooping(true);
    if (view.State().HasSelection())
        return PlayFrames(view, view.State().GetSelection().start, view.State().GetSelection().end);
    return DoneIf(StartFromCursor(view), kNotStarted);
}

Outcome PlayToEnd(CSoundView& view) {
    if (!view.Sound().HasData()) return Failed(refusal::kNoSound);
    view.Playing().ClearPlayPosition();
    view.Sound().SetLooping(false);
    return DoneIf(view.Sound().Play(0), kNotStarted);
}

Outcome GoOnFromCursor(CSoundView& view) {
    if (!view.Sound().IsPlaying()) return Failed(kNotPlaying);
    view.Playing().ClearPlayPosition();
    return DoneIf(StartFromCursor(view), kNotStarted);
}

Outcome StopTransport(CSoundView& view) {
    if (view.Sound().IsPlaying()) {
        view.Sound().Stop(CWavePlayer::StopReport::kShow);
        return Done();
    }
    if (view.Sound().IsRecording()) return view.Playing().EndRecording();
    return Failed(kNotPlaying);
}

Outcome PauseTransport(CSoundView& view) {
    return DoneIf(view.Sound().Pause(), kNotPlaying);
}

Outcome PressSpace(CSoundView& view) {
    const bool busy = view.Sound().IsPlaying() || view.Sound().IsRecording();
    return busy ? StopTransport(view) : Playback(view);
}

Outcome PreviewCut(CSoundView& view) {
    if (!view.Sound().HasData()) return Failed(refusal::kNoSound);
    const std::uint32_t margin = PreviewMargin(view);
    if (!view.State().HasSelection())
        return PlayFrames(view, Before(view.State().Cursor(), margin),
                          Behind(view, view.State().Cursor(), margin));
    const auto [start, end] = view.State().GetSelection();
    const std::uint32_t first = Before(start, margin);
    const std::uint32_t last = Behind(view, end, margin);
    if (first == start) return PlayFrames(view, end, last);
    if (end == last) return PlayFrames(view, first, start);
    CWavePlayer& sound = view.Sound();
    return DoneIf(sound.PlaySkip(sound.ByteOffset(first), sound.ByteOffset(last),
                                 sound.ByteOffset(start), sound.ByteOffset(end)),
                  kNotStarted);
}

Outcome PreRollToCursor(CSoundView& view) {
    if (!view.Sound().HasData()) return Failed(refusal::kNoSound);
    return PlayFrames(view, Before(view.State().Cursor(), PreviewMargin(view)),
                      view.State().Cursor());
}

}  // namespace sonavel
