#include "view/state/zoom.h"

#include <gtest/gtest.h>

#include <limits>

#include "view/state/pixel_map.h"
#include "view/view_printers.h"

namespace sonavel {
namespace {

ZoomContext ContextOf(std::int64_t frames, unsigned channels, std::int64_t selectionStart = 0) {
    ZoomContext context;
    context.frameCount = frames;
    context.channels = channels;
    context.bits = 16;
    context.samplesPerSecond = 44100;
    context.bytesPerSecond = 44100 * 2 * channels;
    context.dataBytes = frames * 2 * channels;
    context.waveformWidth = 620;
    context.waveformHeight = 268;
    context.selectionStart = selectionStart;
    return context;
}

TEST(Zoom, FitsTheSoundIntoTheWindow) {
    EXPECT_EQ(FitZoom(ContextOf(44100, 1)), (ZoomState{{0, 620, 621, 0}, {0, 268, 269, 0}}));
    EXPECT_EQ(FitZoom(ContextOf(44100, 2)), (ZoomState{{0, 620, 621, 0}, {0, 134, 135, 0}}));
    EXPECT_EQ(FitZoom(ContextOf(100, 1)).horizontal, (ScrollState{0, 100, 101, 0}));
    EXPECT_EQ(FitZoom(ContextOf(0, 1)).horizontal, (ScrollState{0, 0, 1, 0}));
}

TEST(Zoom, TimeStepsDoubleAroundTheSelectionStart) {
    const ZoomContext context = ContextOf(44100, 1, 11025);
    ZoomState state = FitZoom(context);
    const ScrollState in[] = {
        {0, 1240, 621, 0},      {0, 2480, 621, 310},    {0, 4960, 621, 930},
        {0, 9920, 621, 2170},   {0, 19840, 621, 4650},  {0, 39680, 621, 9610},
        {0, 44100, 621, 10715}, {0, 44100, 621, 10715},
    };
    for (const ScrollState& expected : in) {
        state = TimeZoomIn(state, context);
        EXPECT_EQ(state.horizontal, expected);
    }
    const ScrollState out[] = {
        {0, 22050, 621, 5202}, {0, 11025, 621, 2446}, {0, 5512, 621, 1068}, {0, 2756, 621, 379},
        {0, 1378, 621, 34},    {0, 689, 621, 0},      {0, 620, 621, 0},     {0, 620, 621, 0},
    };
    for (const ScrollState& expected : out) {
        state = TimeZoomOut(state, context);
        EXPECT_EQ(state.horizontal, expected);
    }
}

TEST(Zoom, TimeZoomOutReachesTheWindowEvenBeyondAShortSound) {
    const ZoomContext context = ContextOf(100, 1);
    EXPECT_EQ(TimeZoomOut(FitZoom(context), context).horizontal, (ScrollState{0, 620, 101, 0}));
    EXPECT_EQ(TimeZoomIn(FitZoom(context), context).horizontal.maximum, 100);
}

TEST(Zoom, TimeZoomFullCentresTheSelectionStart) {
    for (const auto& [start, position] :
         {std::pair{20000, 19700}, {0, 0}, {44100, 43480}, {300, 0}, {301, 1}}) {
        const ZoomContext context = ContextOf(44100, 2, start);
        const ZoomState full = TimeZoomFull(FitZoom(context), context);
        EXPECT_EQ(full.horizontal, (ScrollState{0, 44100, 621, position}));
        EXPECT_EQ(DefaultZoom(context, OpeningZoom::kFullTime), full);
        EXPECT_EQ(DefaultZoom(context, OpeningZoom::kFit), FitZoom(context));
    }
}

TEST(Zoom, ARangeFillsTheWindow) {
    const ZoomContext context = ContextOf(44100, 1);
    const ZoomState fit = FitZoom(context);
    EXPECT_EQ(ZoomToRange(fit, context, 10000, 20000).horizontal, (ScrollState{0, 2734, 621, 619}));
    EXPECT_EQ(ZoomToRange(fit, context, 100, 101).horizontal, (ScrollState{0, 44100, 621, 100}));
    EXPECT_EQ(ZoomToRange(fit, context, 200, 200), fit);
    EXPECT_EQ(ZoomToRange(fit, context, 200, 100), fit);
}

TEST(Zoom, LevelStepsOfAHalfKeepTheCentre) {
    const ZoomContext mono = ContextOf(44100, 1);
    ZoomState state = FitZoom(mono);
    const ScrollState in[] = {
        {0, 402, 269, 67},    {0, 603, 269, 167},   {0, 904, 269, 317},
        {0, 1356, 269, 543},  {0, 2034, 269, 882},  {0, 3051, 269, 1390},
        {0, 4576, 269, 2152}, {0, 5360, 269, 2544}, {0, 5360, 269, 2544},
    };
    for (const ScrollState& expected : in) {
        state = LevelZoomIn(state, mono);
        EXPECT_EQ(state.vertical, expected);
    }
    const ScrollState out[] = {{0, 3573, 269, 1651}, {0, 2382, 269, 1056}, {0, 1588, 269, 659}};
    for (const ScrollState& expected : out) {
        state = LevelZoomOut(state, mono);
        EXPECT_EQ(state.vertical, expected);
    }
    for (int i = 0; i < 9; ++i) state = LevelZoomOut(state, mono);
    EXPECT_EQ(state.vertical.maximum, 268);
    EXPECT_FALSE(IsLevelZoomed(state));
}

TEST(Zoom, AStereoLaneEndsAtHalfTheWindow) {
    const ZoomContext stereo = ContextOf(44100, 2);
    const ZoomState fit = FitZoom(stereo);
    EXPECT_EQ(LevelZoomOut(fit, stereo), fit);
    const ZoomState in = LevelZoomIn(fit, stereo);
    EXPECT_EQ(in.vertical, (ScrollState{0, 201, 135, 33}));
    EXPECT_TRUE(IsLevelZoomed(in));
    EXPECT_EQ(LevelZoomOut(in, stereo).vertical, (ScrollState{0, 134, 135, 0}));
    EXPECT_EQ(LevelZoomFull(fit, stereo).vertical, (ScrollState{0, 5360, 135, 2613}));
}

TEST(Zoom, NothingHappensToAnEmptySound) {
    const ZoomContext empty = ContextOf(0, 1);
    const ZoomState fit = FitZoom(empty);
    for (auto* command :
         {TimeZoomIn, TimeZoomOut, TimeZoomFull, LevelZoomIn, LevelZoomOut, LevelZoomFull}) {
        EXPECT_EQ(command(fit, empty), fit);
    }
    EXPECT_EQ(ZoomToRange(fit, empty, 0, 10), fit);
    EXPECT_EQ(ApplyUserZoom(fit, empty, UserZoom{}), fit);
    EXPECT_EQ(ScrollToPlayPosition(fit, empty, 100), fit);
}

TEST(Zoom, RatioAndPercentages) {
    const ZoomContext context = ContextOf(44100, 2);
    ZoomState state = FitZoom(context);
    EXPECT_EQ(TimeZoomRatio(state, context), 71);
    EXPECT_DOUBLE_EQ(TimeZoomPercent(state, context), 100);
    EXPECT_DOUBLE_EQ(LevelZoomPercent(state, context), 50);
    state = TimeZoomIn(LevelZoomIn(state, context), context);
    EXPECT_EQ(TimeZoomRatio(state, context), 35);
    EXPECT_DOUBLE_EQ(TimeZoomPercent(state, context), 200);
    EXPECT_DOUBLE_EQ(LevelZoomPercent(state, context), 75);
    state.horizontal = {};
    EXPECT_EQ(TimeZoomRatio(state, context), 0);
    EXPECT_EQ(TimeZoomPercent(state, context), 0);
}

TEST(Zoom, ScrollsToThePlayPositionAsIfStereo) {
    ZoomContext context = ContextOf(44100, 1);
    ZoomState state = FitZoom(context);
    for (int i = 0; i < 3; ++i) state = TimeZoomIn(state, context);
    ASSERT_EQ(state.horizontal.maximum, 4960);
    EXPECT_EQ(ScrollToPlayPosition(state, context, 20000 * 4).horizontal.position, 2249);
    EXPECT_EQ(ScrollToPlayPosition(state, context, 44100 * 4).horizontal.position, 4340);
    context.bits = 8;
    EXPECT_EQ(ScrollToPlayPosition(state, context, 20000 * 2).horizontal.position, 2249);
}

TEST(UserZoom, StartsFromWhatIsSeen) {
    const ZoomContext context = ContextOf(44100, 1, 11025);
    const ZoomState state = TimeZoomIn(TimeZoomIn(FitZoom(context), context), context);
    const UserZoom zoom = InitialUserZoom(state, context);
    EXPECT_EQ(zoom.startSample, 5512);  // pixel 310 of 2480
    EXPECT_EQ(zoom.endSample, 16537);   // pixel 930
    EXPECT_EQ(zoom.startSeconds, 0.125);
    EXPECT_EQ(zoom.endSeconds, 0.375);
    EXPECT_EQ(zoom.timePercent, 400);
    EXPECT_EQ(zoom.levelPercent, 100);
}

TEST(UserZoom, PercentagesScaleTheCurrentZoom) {
    const ZoomContext context = ContextOf(44100, 1, 11025);
    const ZoomState state = TimeZoomIn(FitZoom(context), context);
    struct Case {
        double time, level;
        ScrollState horizontal, vertical;
    };
    const ScrollState h = state.horizontal, v = state.vertical;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {200, 100, {0, 2480, 621, 620}, v},
        {50, 200, {0, 620, 621, 0}, {0, 536, 269, 134}},
        {33.3, 33.3, {0, 412, 413, 0}, {0, 89, 90, 0}},
        {1e9, 1e9, {0, 44100, 621, 11025}, {0, 5360, 269, 2546}},
        {0, -100, h, v},
        {0.01, nan, h, v},
    };
    for (const Case& c : cases) {
        UserZoom zoom;
        zoom.type = UserZoom::Type::kPercent;
        zoom.timePercent = c.time;
        zoom.levelPercent = c.level;
        const ZoomState result = ApplyUserZoom(state, context, zoom);
        EXPECT_EQ(result.horizontal, c.horizontal) << c.time;
        EXPECT_EQ(result.vertical, c.vertical) << c.level;
    }
}

UserZoom SampleRange(std::int64_t start, std::int64_t end) {
    UserZoom zoom;
    zoom.type = UserZoom::Type::kSample;
    zoom.startSample = start;
    zoom.endSample = end;
    return zoom;
}

UserZoom TimeRange(double start, double end) {
    UserZoom zoom;
    zoom.type = UserZoom::Type::kTime;
    zoom.startSeconds = start;
    zoom.endSeconds = end;
    return zoom;
}

TEST(UserZoom, RangesOutsideTheSoundAreRefused) {
    const ZoomContext context = ContextOf(44100, 1);
    const ZoomState fit = FitZoom(context);
    for (const UserZoom& zoom : {SampleRange(5, 5), SampleRange(9, 5), SampleRange(-1, 5),
                                 SampleRange(0, 44101), SampleRange(-5, 0), TimeRange(0.5, 0.5),
                                 TimeRange(0.7, 0.5), TimeRange(-0.1, 0.5), TimeRange(2, 3)})
        EXPECT_EQ(ApplyUserZoom(fit, context, zoom), fit)
            << zoom.startSample << ".." << zoom.endSample << ", " << zoom.startSeconds << " s";
    // From the very first frame, too.
    for (const UserZoom& zoom : {SampleRange(0, 11025), TimeRange(0, 0.25)})
        EXPECT_EQ(ApplyUserZoom(TimeZoomFull(fit, context), context, zoom).horizontal,
                  (ScrollState{0, 2480, 621, 0}));
    EXPECT_EQ(ApplyUserZoom(fit, context, SampleRange(22050, 44100)).horizontal,
              (ScrollState{0, 1240, 621, 620}));
    // Times become frames, within the sound.
    EXPECT_EQ(ApplyUserZoom(fit, context, TimeRange(0.5, 1e300)),
              ZoomToRange(fit, context, 22050, 44100));
}

}  // namespace
}  // namespace sonavel
