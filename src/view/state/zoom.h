// Every zoom command as a function from both scroll states to both scroll states. A command that
// does not apply returns them unchanged.
#pragma once

#include <cstdint>

#include "sound/sound.h"
#include "view/commands/view_questions.h"
#include "view/state/scroll_state.h"

namespace sonavel {

struct ZoomState {
    ScrollState horizontal;
    ScrollState vertical;

    bool operator==(const ZoomState&) const = default;
};

// What the commands need to know of the sound and of the view; pixels and frames.
struct ZoomContext {
    std::int64_t frameCount = 0;
    unsigned channels = 1;
    unsigned bits = 8;
    std::uint32_t samplesPerSecond = 0;
    std::uint32_t bytesPerSecond = 0;
    std::int64_t dataBytes = 0;
    int waveformWidth = 0;
    int waveformHeight = 0;
    std::int64_t selectionStart = 0;

    static ZoomContext Of(const Sound& wave, int waveformWidth, int waveformHeight,
                          std::int64_t selectionStart);
};

// The whole sound in the window, a lane a channel; also for an empty sound.
ZoomState FitZoom(const ZoomContext& context);
enum class OpeningZoom { kFit, kFullTime };
ZoomState DefaultZoom(const ZoomContext& context, OpeningZoom opening);

ZoomState TimeZoomIn(const ZoomState& state, const ZoomContext& context);
ZoomState TimeZoomOut(const ZoomState& state, const ZoomContext& context);
ZoomState TimeZoomFull(const ZoomState& state, const ZoomContext& context);
// Frames [startFrame, endFrame).
ZoomState ZoomToRange(const ZoomState& state, const ZoomContext& context, std::int64_t startFrame,
                      std::int64_t endFrame);
ZoomState LevelZoomIn(const ZoomState& state, const ZoomContext& context);
ZoomState LevelZoomOut(const ZoomState& state, const ZoomContext& context);
ZoomState LevelZoomFull(const ZoomState& state, const ZoomContext& context);

// One of the commands above.
using ZoomFunction = ZoomState (*)(const ZoomState& state, const ZoomContext& context);

// True while more than the visible part of a lane exists: when the vertical bar shows.
bool IsLevelZoomed(const ZoomState& state);

// N / W, 0 when W is below 1; W / width x 100 and H / height x 100, 0 without a width or height.
std::int64_t TimeZoomRatio(const ZoomState& state, const ZoomContext& context);
double TimeZoomPercent(const ZoomState& state, const ZoomContext& context);
double LevelZoomPercent(const ZoomState& state, const ZoomContext& context);

// Scrolls to a byte offset of the player, taken as that of a stereo sound whatever the channel
// count.
ZoomState ScrollToPlayPosition(const ZoomState& state, const ZoomContext& context,
                               std::int64_t positionBytes);

// --- The dialog "User Defined Zoom"

// What the dialog shows at first.
UserZoom InitialUserZoom(const ZoomState& state, const ZoomContext& context);
// Percentages scale the current zoom; one that leaves less than a pixel is not applied, nor are a
// sample or time range that is empty or not within the sound.
ZoomState ApplyUserZoom(const ZoomState& state, const ZoomContext& context, const UserZoom& zoom);

}  // namespace sonavel
