#include "view/draw/grid.h"

#include <gtest/gtest.h>

#include "view/text_widths.h"

namespace sonavel {
namespace {

// One second of 1000 frames on 500 pixels unless told otherwise.
GridRequest RequestFor(const GridSettings& settings) {
    return {{0, 10, 400, 110},  PixelMap(1000, {0, 500, 400, 0}), {0, 100, 101, 0}, 1000, settings,
            StatusFormat::kTime};
}

GridRequest TimeGridOf(int spacingMs, int timeLabels = 0) {
    GridSettings settings;
    settings.timeGrid = 1;
    settings.widthSpacingMs = spacingMs;
    settings.timeLabels = timeLabels;
    return RequestFor(settings);
}

TEST(TimeGrid, LinesStandAtTheRunningSingleSum) {
    const Grid grid = LayOutGrid(TimeGridOf(100), SevenPixelsEach);
    std::vector<int> xs;
    for (const GridLine& line : grid.lines) {
        EXPECT_EQ(line, (GridLine{line.x0, 10, line.x0, 110}));
        xs.push_back(line.x0);
    }
    // The sums 0.70000005 and 0.8000001 lie on their frames, not below as 0.1 added in double
    // would.
    std::vector<int> expected;
    float t = 0;
    for (int i = 0; i < 10; ++i, t = static_cast<float>(t + 0.1)) {
        const int x = static_cast<int>(1000.0 * t) * 500 / 1000;
        if (x >= 1 && x < 400) expected.push_back(x);
    }
    EXPECT_EQ(xs, expected);
    EXPECT_EQ(xs.size(), 7u);
}

TEST(TimeGrid, DrawsNothingWithoutSpacingSoundOrRate) {
    GridRequest noRate = TimeGridOf(100);
    noRate.rate = 0;
    GridRequest noSound = TimeGridOf(100);
    noSound.settings.levelGrid = 1;
    noSound.map = PixelMap(0, {0, 0, 1, 0});
    GridRequest noWidth = noSound;
    noWidth.map = PixelMap(1000, {0, 0, 1, 0});
    // The sum of the spacings no longer grows before it comes into sight.
    GridRequest endless = TimeGridOf(1);
    endless.rate = 1;
    endless.map = PixelMap(2'000'000'000, {0, 400, 401, 399});
    for (const GridRequest& request :
         {TimeGridOf(0), TimeGridOf(-5), noRate, noSound, noWidth, endless})
        EXPECT_TRUE(LayOutGrid(request, SevenPixelsEach).lines.empty());
}

TEST(TimeGrid, LabelledLinesLeaveAGapForTheirText) {
    GridRequest request = TimeGridOf(250, 1);
    request.lane.bottom = 230;  // a fifth of 220 below the gap's top
    const Grid grid = LayOutGrid(request, SevenPixelsEach);
    const std::vector<GridLine> first(grid.lines.begin(), grid.lines.begin() + 4);
    EXPECT_EQ(first, (std::vector<GridLine>{{125, 10, 125, 186},
                                            {122, 186, 128, 186},
                                            {125, 206, 125, 230},
                                            {122, 206, 128, 206}}));
    ASSERT_EQ(grid.labels.size(), 2u);  // the third would pass the edge
    EXPECT_EQ(grid.labels[0].text, "0.250 Sec");
    EXPECT_EQ(grid.labels[0].area, (Rectangle{94, 186, 157, 206}));
}

TEST(TimeGrid, OnlyEveryFewthLineIsLabelledWhenLinesAreDense) {
    // A label is 63 pixels wide, 62 count.
    const std::pair<int, std::vector<std::string>> cases[] = {
        {250, {"0.250 Sec", "0.500 Sec"}},
        {100, {"0.200 Sec", "0.400 Sec", "0.600 Sec"}},              // 50 pixels: every second
        {20, {"0.140 Sec", "0.280 Sec", "0.420 Sec", "0.560 Sec"}},  // 10: every seventh
    };
    for (const auto& [spacingMs, expected] : cases) {
        GridRequest request = TimeGridOf(spacingMs, 1);
        request.lane.right = 350;
        const Grid grid = LayOutGrid(request, SevenPixelsEach);
        std::vector<std::string> labels;
        for (const GridLabel& label : grid.labels) labels.push_back(label.text);
        EXPECT_EQ(labels, expected) << spacingMs;
    }
}

TEST(TimeGrid, AnHourOfMillisecondsDrawsEachPixelOnceWithLabelsApart) {
    GridRequest request = TimeGridOf(1, 1);
    const std::int64_t frames = 44100LL * 3600;
    request.rate = 44100;
    request.map = PixelMap(frames, {0, 400, 401, 0});
    const Grid grid = LayOutGrid(request, SevenPixelsEach);
    EXPECT_LE(grid.lines.size(), 4u * 400);
    EXPECT_GE(grid.lines.size(), 2u * 390);
    // A line whose ticks would reach beyond the lane is left out.
    EXPECT_EQ(std::ranges::min(grid.lines, {}, &GridLine::x0).x0, request.lane.left);
    EXPECT_EQ(std::ranges::max(grid.lines, {}, &GridLine::x1).x1, request.lane.right - 1);
    ASSERT_GE(grid.labels.size(), 3u);
    for (std::size_t i = 1; i < grid.labels.size(); ++i)
        EXPECT_GE(grid.labels[i].area.left, grid.labels[i - 1].area.right - 2);
    // Scrolled to the end the lines are those of the same sum.
    request.map = PixelMap(frames, {0, frames, 401, frames - 1000});
    const std::size_t lines = LayOutGrid(request, SevenPixelsEach).lines.size();
    EXPECT_GE(lines, 1u);
    EXPECT_LE(lines, 4u * 12);
}

TEST(TimeGrid, TypeOneStandsAtTheRulersTicks) {
    GridRequest request = TimeGridOf(0, 1);
    request.settings.type = 1;
    request.format = StatusFormat::kSample;
    const Grid grid = LayOutGrid(request, SevenPixelsEach);
    HorizontalRulerRequest rulerRequest{request.lane,   request.map, request.rate,
                                        request.format, 0,           {}};
    const HorizontalRuler ruler = LayOutHorizontalRuler(rulerRequest, SevenPixelsEach);
    std::vector<int> expected, found;
    for (const TimeTick& tick : ruler.ticks) {
        if (tick.size == TickSize::kMajor && tick.x >= 3) expected.push_back(tick.x);
    }
    for (const GridLine& line : grid.lines) {
        if (line.x0 == line.x1 && line.y0 == 10) found.push_back(line.x0);
    }
    EXPECT_EQ(found, expected);
    ASSERT_FALSE(grid.labels.empty());
    EXPECT_EQ(grid.labels[0].text, "100");
}

TEST(LevelGrid, CountsTwoHundredUnitsFromTopToBottom) {
    const struct {
        int spacing;
        ScrollState vertical;
        std::vector<int> ys;  // from the lane's top
    } cases[] = {
        {50, {0, 100, 101, 0}, {25, 50, 75}},
        {100, {0, 100, 101, 0}, {50}},
        {200, {0, 100, 101, 0}, {}},
        {0, {0, 100, 101, 0}, {}},
        {50, {0, 2000, 101, 950}, {50}},
        {1, {0, 2000, 101, 1900}, {10, 20, 30, 40, 50, 60, 70, 80, 90}},
    };
    for (const auto& c : cases) {
        GridSettings settings;
        settings.levelGrid = 1;
        settings.heightSpacingPercent = c.spacing;
        GridRequest request = RequestFor(settings);
        request.vertical = c.vertical;
        std::vector<int> ys;
        for (const GridLine& line : LayOutGrid(request, SevenPixelsEach).lines) {
            EXPECT_EQ(line, (GridLine{0, line.y0, 400, line.y0}));
            ys.push_back(line.y0 - 10);
        }
        EXPECT_EQ(ys, c.ys) << c.spacing;
    }
}

}  // namespace
}  // namespace sonavel
