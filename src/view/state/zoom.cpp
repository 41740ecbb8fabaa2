#include "view/state/zoom.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "sound/sample_types.h"
#include "view/state/pixel_map.h"

namespace sonavel {
namespace {

constexpr std::int64_t kHighestLevelZoom = 20;   // times the waveform's height
constexpr std::int64_t kLevelStepPercent = 150;  // a step of the level zoom
constexpr int kFullZoomMargin = 20;              // pixels

ZoomState WithTime(const ZoomState& state, std::int64_t width, std::int64_t position) {
    return {state.horizontal.WithRange(width, position), state.vertical};
}

ZoomState WithLevel(const ZoomState& state, std::int64_t height, std::int64_t position) {
    return {state.horizontal, state.vertical.WithRange(height, position)};
}

// The virtual pixel of the selection's start at a width that is about to be set.
std::int64_t StartAt(std::int64_t width, const ZoomContext& context) {
    return width * context.selectionStart / context.frameCount;
}

ZoomState AroundStart(const ZoomState& state, const ZoomContext& context, std::int64_t width) {
    return WithTime(state, width, StartAt(width, context) - state.horizontal.page / 2);
}

std::int64_t HighestLevel(const ZoomContext& context) {
    return context.waveformHeight * kHighestLevelZoom;
}

ZoomState LevelAround(const ZoomState& state, std::int64_t height) {
    const ScrollState& vertical = state.vertical;
    return WithLevel(state, height, (height - vertical.Range()) / 2 + vertical.position);
}

// trunc(extent x percent x 0.01), at most `highest`; nothing when it is below 1 or no number.
std::optional<std::int64_t> Scaled(std::int64_t extent, double percent, std::int64_t highest) {
    const double scaled = static_cast<double>(extent) * percent * 0.01;
    if (!(scaled >= 1)) return std::nullopt;
    if (scaled >= static_cast<double>(highest)) return highest;
    return static_cast<std::int64_t>(scaled);
}

ZoomState ScaleByPercent(const ZoomState& state, const ZoomContext& context, const UserZoom& zoom) {
    ZoomState result = state;
    const auto width = Scaled(state.horizontal.maximum, zoom.timePercent, context.frameCount);
    if (width) result = WithTime(result, *width, StartAt(*width, context));
    const auto height = Scaled(state.vertical.Range(), zoom.levelPercent, HighestLevel(context));
    if (height && state.vertical.Range() >= 1) result = LevelAround(result, *height);
    return result;
}

std::int64_t FrameOfTime(double seconds, const ZoomContext& context) {
    if (context.dataBytes < 1) return 0;
    const double bytes =
        std::min(context.bytesPerSecond * seconds, static_cast<double>(context.dataBytes));
    return std::min(static_cast<std::int64_t>(bytes) * context.frameCount / context.dataBytes,
                    context.frameCount);
}

// As a box shows it and a person confirms it: with three decimals.
double ThreeDecimals(double seconds) {
    char text[400];
    std::snprintf(text, sizeof text, "%.3f", seconds);
    return std::strtod(text, nullptr);
}

}  // namespace

ZoomContext ZoomContext::Of(const Sound& wave, int waveformWidth, int waveformHeight,
                            std::int64_t selectionStart) {
    ZoomContext context;
    context.frameCount = wave.GetFrameCount();
    context.channels = std::clamp(wave.GetChannels(), 1u, 2u);
    context.bits = wave.GetBits();
    context.samplesPerSecond = wave.GetSamplesPerSecond();
    context.bytesPerSecond = wave.GetFormat().averageBytesPerSecond;
    context.dataBytes = wave.GetDataSize();
    context.waveformWidth = waveformWidth;
    context.waveformHeight = waveformHeight;
    context.selectionStart = selectionStart;
    return context;
}

ZoomState FitZoom(const ZoomContext& context) {
    const std::int64_t width = std::min<std::int64_t>(context.frameCount, context.waveformWidth);
    const int lanes = context.channels == 2 ? 2 : 1;
    return {ScrollState{0, width, kWholeRangePage, 0}.Clamped(),
            ScrollState{0, context.waveformHeight / lanes, kWholeRangePage, 0}.Clamped()};
}

ZoomState DefaultZoom(const ZoomContext& context, OpeningZoom opening) {
    const ZoomState fit = FitZoom(context);
    return opening == OpeningZoom::kFullTime ? TimeZoomFull(fit, context) : fit;
}

ZoomState TimeZoomIn(const ZoomState& state, const ZoomContext& context) {
    if (context.frameCount <= 0) return state;
    return AroundStart(state, context, std::min(2 * state.horizontal.maximum, context.frameCount));
}

ZoomState TimeZoomOut(const ZoomState& state, const ZoomContext& context) {
    if (context.frameCount <= 0) return state;
    // The waveform's width is the least even where the sound is shorter.
    const std::int64_t width =
        std::max<std::int64_t>(state.horizontal.maximum / 2, context.waveformWidth);
    return AroundStart(state, context, width);
}

ZoomState TimeZoomFull(const ZoomState& state, const ZoomContext& context) {
    if (context.frameCount <= 0) return state;
    return WithTime(state, context.frameCount,
                    context.selectionStart - (context.waveformWidth - kFullZoomMargin) / 2);
}

ZoomState ZoomToRange(const ZoomState& state, const ZoomContext& context, std::int64_t startFrame,
                      std::int64_t endFrame) {
    if (context.frameCount <= 0 || endFrame <= startFrame) return state;
    const std::int64_t width = std::min(
        context.waveformWidth * context.frameCount / (endFrame - startFrame), context.frameCount);
    return WithTime(state, width, width * startFrame / context.frameCount);
}

ZoomState LevelZoomIn(const ZoomState& state, const ZoomContext& context) {
    const std::int64_t range = state.vertical.Range();
    if (context.frameCount <= 0 || range < 1) return state;
    return LevelAround(state, std::min(range * kLevelStepPercent / 100, HighestLevel(context)));
}

ZoomState LevelZoomOut(const ZoomState& state, const ZoomContext& context) {
    const std::int64_t range = state.vertical.Range();
    if (context.frameCount <= 0 || range < 1) return state;
    if (range * context.channels <= context.waveformHeight) return state;
    std::int64_t height = range * 100 / kLevelStepPercent;
    if (height * context.channels < context.waveformHeight) {
        height = context.waveformHeight / static_cast<std::int64_t>(context.channels);
    }
    return WithLevel(state, height, state.vertical.position - (range - height) / 2);
}

ZoomState LevelZoomFull(const ZoomState& state, const ZoomContext& context) {
    if (context.frameCount <= 0 || state.vertical.Range() < 1) return state;
    return LevelAround(state, HighestLevel(context));
}

bool IsLevelZoomed(const ZoomState& state) {
    return state.vertical.page < state.vertical.Range();
}

std::int64_t TimeZoomRatio(const ZoomState& state, const ZoomContext& context) {
    return PixelMap(context.frameCount, state.horizontal).FramesPerPixel();
}

double TimeZoomPercent(const ZoomState& state, const ZoomContext& context) {
    return PixelMap(context.frameCount, state.horizontal).TimePercent(context.waveformWidth);
}

double LevelZoomPercent(const ZoomState& state, const ZoomContext& context) {
    if (context.waveformHeight < 1) return 0;
    return static_cast<double>(state.vertical.maximum) / context.waveformHeight * 100;
}

ZoomState ScrollToPlayPosition(const ZoomState& state, const ZoomContext& context,
                               std::int64_t positionBytes) {
    const std::int64_t width = state.horizontal.maximum;
    if (context.frameCount < 1 || TimeZoomRatio(state, context) < 1) return state;
    // Two channels are assumed on purpose: callers hand in twice or four times the frame.
    const std::int64_t frame = positionBytes / (2 * SampleBytesOf(context.bits));
    const std::int64_t position = std::min(width, context.frameCount) * frame / context.frameCount;
    return {state.horizontal.WithPosition(position), state.vertical};
}

UserZoom InitialUserZoom(const ZoomState& state, const ZoomContext& context) {
    const PixelMap map(context.frameCount, state.horizontal);
    UserZoom zoom;
    zoom.levelPercent = LevelZoomPercent(state, context);
    zoom.timePercent = TimeZoomPercent(state, context);
    zoom.startSample = map.FrameAt(0);
    zoom.endSample = map.FrameAt(std::min<std::int64_t>(context.waveformWidth, context.frameCount));
    if (context.samplesPerSecond > 0) {
        const double rate = context.samplesPerSecond;
        zoom.startSeconds = ThreeDecimals(static_cast<double>(zoom.startSample) / rate);
        zoom.endSeconds = ThreeDecimals(static_cast<double>(zoom.endSample) / rate);
    }
    return zoom;
}

ZoomState ApplyUserZoom(const ZoomState& state, const ZoomContext& context, const UserZoom& zoom) {
    if (context.frameCount <= 0) return state;
    switch (zoom.type) {
        case UserZoom::Type::kPercent:
            return ScaleByPercent(state, context, zoom);
        case UserZoom::Type::kSample:
            if (zoom.endSample < 1 || zoom.startSample < 0) return state;
            if (zoom.endSample > context.frameCount) return state;
            return ZoomToRange(state, context, zoom.startSample, zoom.endSample);
        case UserZoom::Type::kTime:
            if (!(zoom.startSeconds >= 0 && zoom.startSeconds < zoom.endSeconds)) return state;
            return ZoomToRange(state, context, FrameOfTime(zoom.startSeconds, context),
                               FrameOfTime(zoom.endSeconds, context));
    }
    return state;
}

}  // namespace sonavel
