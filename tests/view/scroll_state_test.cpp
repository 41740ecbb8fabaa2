#include "view/state/scroll_state.h"

#include <gtest/gtest.h>

#include "view/state/pixel_map.h"
#include "view/view_printers.h"

namespace sonavel {
namespace {

TEST(ScrollState, PageAndPositionAreClampedToTheRange) {
    const std::pair<ScrollState, ScrollState> cases[] = {
        {{0, 640, kWholeRangePage, 300}, {0, 640, 641, 0}},
        {{0, 640, 100, 541}, {0, 640, 100, 541}},
        {{0, 640, 100, 542}, {0, 640, 100, 541}},
        {{0, 640, 0, 9999}, {0, 640, 0, 640}},
        {{0, 640, 100, -5}, {0, 640, 100, 0}},
        {{0, 0, kWholeRangePage, 7}, {0, 0, 1, 0}},
        {{0, -3, -9, -1}, {0, 0, 0, 0}},
    };
    for (const auto& [set, expected] : cases) EXPECT_EQ(set.Clamped(), expected);
}

TEST(ScrollState, ANewRangeKeepsThePageAsFarAsItFits) {
    const ScrollState fit = ScrollState{0, 640, kWholeRangePage, 0}.Clamped();
    EXPECT_EQ(fit.WithRange(1280, 400), (ScrollState{0, 1280, 641, 400}));
    EXPECT_EQ(fit.WithRange(1280, 1280), (ScrollState{0, 1280, 641, 640}));
    EXPECT_EQ(fit.WithRange(64, 10), (ScrollState{0, 64, 65, 0}));
}

TEST(ScrollState, StepsEndAtTheEndsOfTheRange) {
    const ScrollState middle{0, 1000, 101, 450};
    const struct {
        ScrollStep step;
        std::int64_t from, to;
    } cases[] = {
        {ScrollStep::kLineBack, 450, 449}, {ScrollStep::kLineForward, 450, 451},
        {ScrollStep::kPageBack, 450, 440}, {ScrollStep::kPageForward, 450, 460},
        {ScrollStep::kPageBack, 4, 0},     {ScrollStep::kPageForward, 895, 900},
        {ScrollStep::kLineBack, 0, 0},     {ScrollStep::kLineForward, 900, 900},
        {ScrollStep::kToStart, 450, 0},    {ScrollStep::kToEnd, 450, 900},
    };
    for (const auto& c : cases)
        EXPECT_EQ(middle.WithPosition(c.from).Stepped(c.step).position, c.to);
}

TEST(ScrollState, ResizingKeepsZoomAndPlace) {
    const struct {
        ScrollState state;
        std::int64_t oldExtent, newExtent;
        ScrollState expected;
    } cases[] = {
        {{0, 640, 641, 0}, 640, 1000, {0, 1000, 1001, 0}},         // fits before and after
        {{0, 2560, 641, 1000}, 640, 1280, {0, 5120, 1282, 2000}},  // zoomed
        {{0, 2560, 641, 1000}, 640, 100, {0, 400, 100, 156}},      // truncated
        {{0, 2560, 641, 1920}, 640, 641, {0, 2564, 642, 1923}},    // at the end
        {{0, 2560, 641, 1000}, 640, 0, {0, 2560, 641, 1000}},      // no room: kept
        {{0, 2560, 641, 1000}, 0, 640, {0, 2560, 641, 1000}},
        {{0, 150'000'000, 641, 149'000'000},
         640,
         3840,
         {0, 900'000'000, 3846, 894'000'000}},  // past 32-bit products
        {{0, 0, 0, 0}, 640, 1280, {0, 0, 1, 0}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.state.Resized(c.oldExtent, c.newExtent), c.expected) << c.newExtent;
}

TEST(PixelMap, ConvertsBothWaysWithoutOverflow) {
    const std::int64_t frames = 2'000'000'000;
    const PixelMap map(frames, {0, 1'500'000'000, 641, 1'400'000'000});
    EXPECT_EQ(map.FrameAt(0), 1'866'666'666);
    EXPECT_EQ(map.FrameAt(3), 1'866'666'670);
    EXPECT_EQ(map.X(1'866'666'670), 2);
    EXPECT_EQ(map.X(0), -1'400'000'000);
    EXPECT_EQ(map.VirtualX(frames), 1'500'000'000);
    EXPECT_EQ(map.FramesIn(25), 33);
    EXPECT_EQ(map.VirtualX(100), 75);
    EXPECT_EQ(map.FramesPerPixel(), 1);
    EXPECT_EQ(map.NearestFrameAt(200'000'000), frames);
    EXPECT_EQ(map.NearestFrameAt(-1'500'000'000), 0);
    EXPECT_DOUBLE_EQ(map.TimePercent(640), 1.5e9 / 640 * 100);
}

TEST(PixelMap, WithoutFramesOrWidthEverythingIsZero) {
    for (const PixelMap& map :
         {PixelMap(), PixelMap(0, {0, 640, 641, 0}), PixelMap(100, {0, 0, 1, 0})}) {
        EXPECT_FALSE(map.Usable());
        EXPECT_EQ(map.FrameAt(50), 0);
        EXPECT_EQ(map.X(50), 0);
        EXPECT_EQ(map.FramesIn(50), 0);
    }
    EXPECT_EQ(PixelMap(100, {0, 0, 1, 0}).FramesPerPixel(), 0);
}

}  // namespace
}  // namespace sonavel
