#include "view/draw/rulers.h"

#include <gtest/gtest.h>

#include "view/random_sound.h"
#include "view/state/zoom.h"
#include "view/text_widths.h"

namespace sonavel {
namespace {

HorizontalRulerRequest RequestFor(std::int64_t frames, const ScrollState& horizontal,
                                  StatusFormat format) {
    return {{0, 278, 640, 298}, PixelMap(frames, horizontal), 44100, format, 0, {}};
}

void ExpectSoundRuler(const HorizontalRulerRequest& request, const TextWidth& textWidth) {
    const HorizontalRuler ruler = LayOutHorizontalRuler(request, textWidth);
    ASSERT_FALSE(ruler.ticks.empty());
    int lastX = -1;
    for (const TimeTick& tick : ruler.ticks) {
        ASSERT_GE(tick.x, 0);
        ASSERT_GT(tick.x, lastX);
        ASSERT_LT(tick.x, 640);
        ASSERT_LE(tick.frame, request.map.FrameCount());
        ASSERT_EQ(tick.x, request.map.X(tick.frame));
        lastX = tick.x;
    }
    int lastEnd = -1000;
    for (const TimeLabel& label : ruler.labels) {
        EXPECT_GT(label.x, lastEnd);
        lastEnd = label.x + textWidth(label.text);
        EXPECT_EQ(label.x, request.map.X(label.frame) + 3);
    }
    // No label was left out for want of room: every major tick in sight has one.
    std::size_t majors = 0;
    for (const TimeTick& tick : ruler.ticks) majors += tick.size == TickSize::kMajor;
    EXPECT_GE(ruler.labels.size(), majors);
}

TEST(HorizontalRuler, LabelsNeverTouchAtAnyZoomInAnyFormat) {
    for (const TextWidth& textWidth : {TextWidth(SevenPixelsEach), TextWidth(Proportional)}) {
        for (const std::int64_t frames : {30LL, 5000LL, 44100LL, 158'760'000LL, 2'000'000'000LL}) {
            ZoomContext context;
            context.frameCount = frames;
            context.waveformWidth = 620;
            context.waveformHeight = 268;
            context.selectionStart = frames / 3;
            ZoomState state = FitZoom(context);
            for (int step = 0; step < 24; ++step) {
                for (const auto format :
                     {StatusFormat::kSample, StatusFormat::kTime, StatusFormat::kSecond}) {
                    SCOPED_TRACE(::testing::Message() << frames << " frames, step " << step
                                                      << ", format " << static_cast<int>(format));
                    ExpectSoundRuler(RequestFor(frames, state.horizontal, format), textWidth);
                }
                state = TimeZoomIn(state, context);
            }
        }
    }
}

TEST(HorizontalRuler, LeastStepsOfTheFormats) {
    const struct {
        std::int64_t frames, width;
        StatusFormat format;
        std::int64_t step;  // frames between labels
        const char* second;
    } cases[] = {
        {44100, 620, StatusFormat::kSample, 5000, "5000"},
        {44100, 44100, StatusFormat::kSample, 50, "50"},
        {44100, 620, StatusFormat::kSecond, 4410, "0.100"},
        {44100 * 10, 620, StatusFormat::kSecond, 44100, "1.000"},
        {44100 * 60, 620, StatusFormat::kTime, 44100 * 10, "00:00:10.000"},
        {44100 * 110, 620, StatusFormat::kTime, 44100 * 30, "00:00:30.000"},
        {44100 * 60, 620, StatusFormat::kSecond, 44100 * 5, "5.000"},
        {44100LL * 3600, 620, StatusFormat::kTime, 44100LL * 600, "00:10:00.000"},
        {44100LL * 36000, 620, StatusFormat::kTime, 44100LL * 7200, "02:00:00.000"},
    };
    for (const auto& c : cases) {
        const auto ruler = LayOutHorizontalRuler(
            RequestFor(c.frames, {0, c.width, 621, 0}, c.format), SevenPixelsEach);
        ASSERT_GE(ruler.labels.size(), 2u);
        EXPECT_EQ(ruler.labels[0].frame, 0);
        EXPECT_EQ(ruler.labels[1].frame, c.step) << c.second;
        EXPECT_EQ(ruler.labels[1].text, c.second);
    }
}

TEST(HorizontalRuler, SubdividesByRoundSteps) {
    // Thirty seconds between the labels; six times five between the ticks.
    const auto ruler = LayOutHorizontalRuler(
        RequestFor(44100 * 110, {0, 620, 621, 0}, StatusFormat::kTime), SevenPixelsEach);
    ASSERT_GT(ruler.ticks.size(), 7u);
    EXPECT_EQ(ruler.ticks[0].size, TickSize::kMajor);
    for (int i = 1; i < 6; ++i) EXPECT_EQ(ruler.ticks[i].size, TickSize::kMinor);
    EXPECT_EQ(ruler.ticks[6].size, TickSize::kMajor);
    EXPECT_EQ(ruler.ticks[1].frame, 44100 * 5);
}

TEST(HorizontalRuler, ShowsALabelWhoseTickIsScrolledOut) {
    const auto ruler = LayOutHorizontalRuler(
        RequestFor(44100, {0, 4410, 621, 1005}, StatusFormat::kSample), SevenPixelsEach);
    ASSERT_FALSE(ruler.labels.empty());
    EXPECT_EQ(ruler.labels[0].text, "10000");
    EXPECT_EQ(ruler.labels[0].x, -2);
    EXPECT_GT(ruler.ticks[0].frame, 10000);
}

TEST(HorizontalRuler, MarksCursorAndSelectionInSight) {
    auto request = RequestFor(44100, {0, 4410, 621, 1000}, StatusFormat::kTime);
    request.cursor = 12000;
    request.selection = {9000, 16000};
    const auto ruler = LayOutHorizontalRuler(request, SevenPixelsEach);
    EXPECT_EQ(ruler.cursorX, 200);
    EXPECT_FALSE(ruler.selectionStartX);
    EXPECT_EQ(ruler.selectionEndX, 600);
    request.selection = {12000, 12000};
    EXPECT_FALSE(LayOutHorizontalRuler(request, SevenPixelsEach).selectionEndX);
}

TEST(HorizontalRuler, IsEmptyWithoutSound) {
    EXPECT_TRUE(
        LayOutHorizontalRuler(RequestFor(0, {0, 0, 1, 0}, StatusFormat::kTime), SevenPixelsEach)
            .ticks.empty());
}

// A ruler beside these lanes, whole levels in sight unless told otherwise.
std::vector<LevelTick> LevelTicks(std::vector<Rectangle> lanes, const ScrollState& vertical,
                                  int labelHeight = 10) {
    return LayOutVerticalRuler({{620, 0, 640, 400}, lanes, vertical, 65536, labelHeight});
}

TEST(VerticalRuler, TicksEveryTenPercentWithoutZoom) {
    const auto ticks = LevelTicks({{0, 30, 620, 230}}, {0, 200, 201, 0});
    ASSERT_EQ(ticks.size(), 20u);  // that of -100 % would lie below the ruler
    EXPECT_EQ(ticks[0].y, 30);
    EXPECT_EQ(ticks[0].label, "100");
    EXPECT_EQ(ticks[0].labelX, 625);
    EXPECT_EQ(ticks[0].labelY, 24);
    EXPECT_EQ(ticks[1].label, "");
    EXPECT_EQ(ticks[5].y, 80);  // 16384 of 65536 above the centre
    EXPECT_EQ(ticks[10].y, 130);
    EXPECT_EQ(ticks[10].label, "0");
    EXPECT_EQ(ticks[12].label, "-20");
}

TEST(VerticalRuler, DivisionsGrowWithTheZoom) {
    struct Case {
        std::int64_t range;
        int percentBetweenTicks;
    };
    for (const Case& c : {Case{200, 10}, Case{999, 10}, Case{1000, 5}, Case{2000, 2}, Case{2999, 2},
                          Case{3000, 1}, Case{4000, 1}}) {
        const auto ticks = LevelTicks({{0, 0, 20, 200}}, {0, c.range, 200, (c.range - 200) / 2});
        ASSERT_GE(ticks.size(), 2u);
        EXPECT_EQ(ticks[0].percent - ticks[1].percent, c.percentBetweenTicks) << c.range;
        for (const LevelTick& tick : ticks)
            EXPECT_EQ(tick.label.empty(), tick.percent / c.percentBetweenTicks % 2 != 0);
    }
}

TEST(VerticalRuler, ALowLaneIsLabelledEvenlyFromItsCentre) {
    const struct {
        int height;
        std::vector<std::string> labels;
    } cases[] = {
        {110, {"100", "80", "60", "40", "20", "0", "-20", "-40", "-60", "-80"}},
        {109, {"80", "40", "0", "-40", "-80"}},
        {56, {"80", "40", "0", "-40", "-80"}},
        {55, {"100", "0"}},
        {22, {"100", "0"}},
        {21, {"0"}},
        {3, {"0"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> labels;
        for (const LevelTick& tick :
             LevelTicks({{0, 0, 620, c.height}}, {0, c.height, c.height + 1, 0}))
            if (!tick.label.empty()) labels.push_back(tick.label);
        EXPECT_EQ(labels, c.labels) << c.height;
    }
}

TEST(VerticalRuler, LabelsNeverTouchInAnyLaneAtAnyPlaceInAnySize) {
    for (const int labelHeight : {10, 17})
        for (int height = 4; height < 150; height += 5) {
            const std::vector<Rectangle> lanes = {{0, 0, 620, height},
                                                  {0, height + 3, 620, 2 * height}};
            for (std::int64_t range = height; range < 40 * height; range = range * 3 / 2 + 1)
                for (std::int64_t place = 0; place + height <= range; place += range / 9 + 1) {
                    int last = -1000;
                    for (const LevelTick& tick :
                         LevelTicks(lanes, {0, range, height, place}, labelHeight)) {
                        if (tick.label.empty()) continue;
                        ASSERT_GE(tick.labelY - last, labelHeight)
                            << height << " " << range << " " << place;
                        last = tick.labelY;
                    }
                }
        }
}

}  // namespace
}  // namespace sonavel
