#include "view/state/view_geometry.h"

#include <gtest/gtest.h>

#include "view/view_printers.h"

namespace sonavel {
namespace {

ViewGeometry LayoutOf(int width, int height, RulerVisibility horizontal, RulerVisibility vertical) {
    return ViewGeometry::Layout({{0, 0, width, height}, horizontal, vertical, 16});
}

TEST(ViewGeometry, PartsAroundTheWaveform) {
    constexpr auto kShown = RulerVisibility::kShown;
    constexpr auto kHidden = RulerVisibility::kHidden;
    const ViewGeometry both = LayoutOf(640, 320, kShown, kShown);
    EXPECT_EQ(both.waveform, (Rectangle{0, 0, 620, 268}));
    EXPECT_EQ(both.verticalRuler, (Rectangle{620, 0, 640, 268}));
    EXPECT_EQ(both.markerStrip, (Rectangle{0, 268, 640, 278}));
    EXPECT_EQ(both.horizontalRuler, (Rectangle{0, 278, 640, 298}));
    EXPECT_EQ(both.horizontalScrollBar, (Rectangle{44, 298, 620, 320}));
    EXPECT_EQ(both.verticalScrollBar, (Rectangle{624, 0, 640, 320}));
    EXPECT_EQ(both.timeZoomButton, (Rectangle{0, 298, 22, 320}));
    EXPECT_EQ(both.levelZoomButton, (Rectangle{22, 298, 44, 320}));
    EXPECT_EQ(both.zoomerButton, (Rectangle{620, 298, 640, 320}));

    EXPECT_EQ(LayoutOf(640, 320, kHidden, kShown).waveform, (Rectangle{0, 0, 620, 288}));
    EXPECT_TRUE(LayoutOf(640, 320, kHidden, kShown).horizontalRuler.Empty());
    EXPECT_EQ(LayoutOf(640, 320, kShown, kHidden).waveform, (Rectangle{0, 0, 640, 268}));
    EXPECT_TRUE(LayoutOf(640, 320, kShown, kHidden).verticalRuler.Empty());
}

TEST(ViewGeometry, AWindowTooSmallHasNoNegativeParts) {
    for (int size = 0; size < 70; ++size) {
        const ViewGeometry g =
            LayoutOf(size, size, RulerVisibility::kShown, RulerVisibility::kShown);
        for (const Rectangle& part :
             {g.waveform, g.verticalRuler, g.markerStrip, g.horizontalRuler, g.verticalScrollBar,
              g.horizontalScrollBar, g.Lane(0, 2), g.Lane(1, 2)}) {
            EXPECT_GE(part.Width(), 0) << size;
            EXPECT_GE(part.Height(), 0) << size;
        }
    }
}

TEST(ViewGeometry, StereoLanesLeaveRoomForTheirSeparator) {
    const ViewGeometry g = LayoutOf(640, 321, RulerVisibility::kShown, RulerVisibility::kShown);
    ASSERT_EQ(g.waveform.Height(), 269);
    EXPECT_EQ(g.Lane(0, 1), g.waveform);
    EXPECT_EQ(g.Lane(0, 2), (Rectangle{0, 0, 620, 132}));
    EXPECT_EQ(g.Lane(1, 2), (Rectangle{0, 135, 620, 269}));
}

TEST(ViewGeometry, SelectionBackground) {
    const Rectangle waveform{0, 0, 100, 50};
    const PixelMap map(4000, {0, 400, 101, 150});  // ten frames a pixel, frames 1500 to 2500
    const struct {
        Selection selection;
        int left, right;  // equal: nothing
    } cases[] = {
        {{1600, 1700}, 11, 21},  {{1600, 1609}, 0, 0}, {{1609, 1610}, 11, 12}, {{0, 1700}, 1, 21},
        {{1600, 4000}, 11, 100}, {{0, 4000}, 1, 100},  {{0, 1000}, 0, 0},      {{3000, 4000}, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.selection.start << ".." << c.selection.end);
        const Rectangle found = SelectionRect(waveform, map, c.selection);
        if (c.left == c.right) {
            EXPECT_TRUE(found.Empty());
        } else {
            EXPECT_EQ(found, (Rectangle{c.left, 0, c.right, 50}));
        }
    }
}

TEST(ViewGeometry, CursorColumn) {
    const Rectangle waveform{0, 0, 100, 50};
    const PixelMap map(4000, {0, 400, 101, 150});
    const std::pair<std::int64_t, int> lefts[] = {
        {1490, 0}, {1500, 1}, {1600, 11}, {2500, 99}, {4000, 99}};
    for (const auto& [frame, left] : lefts)
        EXPECT_EQ(CursorRect(waveform, map, frame), (Rectangle{left, 0, left + 1, 50})) << frame;
    EXPECT_TRUE(CursorRect(waveform, map, 1480).Empty());
    EXPECT_TRUE(CursorRect(waveform, PixelMap(), 0).Empty());
}

}  // namespace
}  // namespace sonavel
