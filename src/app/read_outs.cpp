#include "app/read_outs.h"

#include "view/state/status_texts.h"

namespace sonavel {

ReadOuts ReadOutsOf(const CSoundView& view) {
    const CWavePlayer& sound = view.Sound();
    const auto format = view.Settings().statusFormat;
    const std::uint32_t rate = sound.GetSamplesPerSecond();
    const std::int64_t cursor = view.State().Cursor();
    const std::string place =
        PositionText(format, view.Playing().PlayFrame().value_or(view.State().Cursor()), rate);
    const std::string selection = SelectionText(format, view.State().GetSelection(), rate);
    const bool isRecording = sound.IsRecording();
    return {.isBusy = isRecording || sound.IsPlaying(),
            .state = view.Playing().StatusText(),
            .selection = selection.empty() ? place : selection,
            .zoom = ZoomText(view.Zoom().TimeRatio(), view.Zoom().TimePercent()),
            .time = isRecording ? PositionText(format, cursor + sound.GetRecordedFrames(), rate)
                                : place,
            .ratio = ZoomRatioText(view.Zoom().TimeRatio())};
}

}  // namespace sonavel
