#include "view/cursor_moves.h"

#include "view_fixture.h"

namespace sonavel {
namespace {

using CursorMovesTest = ViewTest;
using Move = bool (*)(CSoundView&);

bool Left1(CSoundView& v) {
    return MoveCursorLeft(v, 1, MoveMode::kCollapse);
}
bool Left25(CSoundView& v) {
    return MoveCursorLeft(v, 25, MoveMode::kCollapse);
}
bool ExtendLeft1(CSoundView& v) {
    return MoveCursorLeft(v, 1, MoveMode::kExtend);
}
bool ExtendLeft25(CSoundView& v) {
    return MoveCursorLeft(v, 25, MoveMode::kExtend);
}
bool Right1(CSoundView& v) {
    return MoveCursorRight(v, 1, MoveMode::kCollapse);
}
bool Right25(CSoundView& v) {
    return MoveCursorRight(v, 25, MoveMode::kCollapse);
}
bool ExtendRight1(CSoundView& v) {
    return MoveCursorRight(v, 1, MoveMode::kExtend);
}
bool ExtendRight25(CSoundView& v) {
    return MoveCursorRight(v, 25, MoveMode::kExtend);
}

TEST_F(CursorMovesTest, MovesAtTenFramesAPixelLeaveCursorAndSelectionAsStated) {
    const struct {
        const char* name;
        Move move;
        std::uint32_t cursor;
        Selection selection;
        std::uint32_t newCursor;
        Selection newSelection;
    } cases[] = {
        {"left collapses", Left1, 100, {50, 200}, 90, {90, 90}},
        {"rewind", Left25, 1000, {0, 0}, 750, {750, 750}},
        {"left onto 0", Left1, 10, {10, 10}, 0, {0, 0}},
        {"left past 0 stops at 1", Left1, 5, {5, 5}, 1, {1, 1}},
        {"rewind at 0 goes to 1", Left25, 0, {0, 0}, 1, {1, 1}},
        {"extending from a collapsed selection", ExtendLeft1, 100, {100, 100}, 90, {90, 100}},
        {"extending behind the start", ExtendLeft1, 500, {100, 1000}, 490, {100, 1000}},
        {"extending onto the start", ExtendLeft1, 110, {100, 1000}, 100, {100, 1000}},
        {"extending before the start", ExtendLeft25, 100, {100, 1000}, 1, {1, 1000}},
        {"right collapses", Right1, 100, {50, 200}, 110, {110, 110}},
        {"forward", Right25, 1000, {0, 0}, 1250, {1250, 1250}},
        {"right stops at the end", Right25, 6395, {0, 0}, 6400, {6400, 6400}},
        {"extending right moves the start", ExtendRight1, 100, {100, 300}, 110, {110, 300}},
        {"also inside the selection", ExtendRight25, 500, {100, 1000}, 750, {750, 1000}},
        {"also past the end", ExtendRight1, 100, {100, 100}, 110, {110, 100}},
        {"not before the start", ExtendRight1, 50, {100, 1000}, 60, {100, 1000}},
    };
    OpenRamp(6400);
    ASSERT_EQ(View().TimeRatio(), 10);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        View().SetCursor(c.cursor);
        View().SetSelection(c.selection.start, c.selection.end);
        EXPECT_TRUE(c.move(View()));
        EXPECT_EQ(View().Cursor(), c.newCursor);
        EXPECT_EQ(View().GetSelection(), c.newSelection);
    }
}

TEST_F(CursorMovesTest, ASelectionWhoseStartPassedItsEndCountsAsNone) {
    OpenRamp(6400);
    View().SetCursor(100);
    View().SetSelection(100, 100);
    ExtendRight25(View());
    EXPECT_FALSE(View().HasSelection());
    EXPECT_EQ(View().SelectionOrAll(), (Selection{0, 6400}));
    // Coming back over the end selects again, with the end where it always was.
    ExtendLeft25(View());
    ExtendLeft1(View());
    EXPECT_EQ(View().GetSelection(), (Selection{90, 100}));
}

TEST_F(CursorMovesTest, LeavingTheWindowScrollsByThreeSteps) {
    const struct {
        const char* name;
        Move move;
        std::uint32_t cursor;
        std::int64_t newPosition;
    } cases[] = {
        {"left out of the window", Left1, 1000, 997},
        {"one pixel outside counts as inside", Left1, 1001, 1000},
        {"within", Left1, 1300, 1000},
        {"right out of the window", Right1, 1641, 1003},
        {"on the right edge", Right1, 1640, 1000},
        {"far left", Left25, 1000, 925},
        {"far right", Right25, 1640, 1075},
    };
    OpenRamp(6400);
    View().ZoomTimeFull();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        View().SetCursor(c.cursor);
        View().ScrollHorizontallyTo(1000);
        ASSERT_EQ(View().Horizontal().position, 1000);
        c.move(View());
        EXPECT_EQ(View().Horizontal().position, c.newPosition);
    }
}

TEST_F(CursorMovesTest, ScrollingStopsAtBothEndsOfTheRange) {
    OpenRamp(6400);
    View().ZoomTimeFull();
    View().ScrollHorizontallyTo(10);
    View().SetCursor(5);
    Left25(View());
    EXPECT_EQ(View().Horizontal().position, 0);
    View().ScrollHorizontallyTo(6400);
    const std::int64_t last = View().Horizontal().position;
    View().SetCursor(6400);
    Right25(View());
    EXPECT_EQ(View().Horizontal().position, last);
    EXPECT_EQ(View().Cursor(), 6400u);
}

TEST_F(CursorMovesTest, StartAndEndDropTheSelectionToZeroAndScrollThere) {
    for (const unsigned bits : {8u, 16u}) {
        OpenRamp(6400, 1, bits);
        View().ZoomTimeFull();
        View().SetSelection(100, 200);
        EXPECT_TRUE(MoveCursorToEnd(View()));
        EXPECT_EQ(View().Cursor(), 6400u);
        EXPECT_EQ(View().GetSelection(), Selection{});
        EXPECT_EQ(View().Horizontal().position, View().Horizontal().LastPosition());
        EXPECT_TRUE(View().IsFrameInSight(6400));
        EXPECT_TRUE(MoveCursorToStart(View()));
        EXPECT_EQ(View().Cursor(), 0u);
        EXPECT_EQ(View().Horizontal().position, 0);
    }
}

TEST_F(CursorMovesTest, SelectingToTheEndsKeepsTheOtherEnd) {
    OpenRamp(6400);
    View().SetCursor(100);
    SelectToEnd(View());
    EXPECT_EQ(View().GetSelection(), (Selection{100, 6400}));
    View().SetSelection(200, 300);
    SelectToStart(View());
    EXPECT_EQ(View().GetSelection(), (Selection{0, 300}));
    EXPECT_EQ(View().Cursor(), 0u);
    View().SetCursor(77);
    SelectAll(View());
    EXPECT_EQ(View().GetSelection(), (Selection{0, 6400}));
    EXPECT_EQ(View().Cursor(), 77u);
}

TEST_F(CursorMovesTest, GoToCursorTakesAFrameOrATimeAndShowsIt) {
    const struct {
        GoToChoice choice;
        std::uint32_t frame;
    } cases[] = {
        {{GoToChoice::Unit::kFrame, 5000, 0}, 5000}, {{GoToChoice::Unit::kFrame, 9999, 0}, 6400},
        {{GoToChoice::Unit::kTime, 0, 2.5}, 2500},   {{GoToChoice::Unit::kTime, 0, -1}, 0},
        {{GoToChoice::Unit::kTime, 0, 1e12}, 6400},
    };
    OpenRamp(6400);
    View().ZoomTimeFull();
    for (const auto& c : cases) {
        View().SetSelection(10, 20);
        dialogs.goTo = c.choice;
        EXPECT_TRUE(AskAndGoToCursor(View()));
        EXPECT_EQ(View().Cursor(), c.frame);
        EXPECT_EQ(View().GetSelection(), (Selection{c.frame, c.frame}));
        EXPECT_TRUE(View().IsFrameInSight(c.frame));
    }
    dialogs.goTo.reset();
    EXPECT_FALSE(AskAndGoToCursor(View()));
    EXPECT_EQ(View().Cursor(), 6400u);
}

TEST_F(CursorMovesTest, SelectsBetweenTheNearestMarkersOrToTheEnds) {
    OpenRamp(1000);
    SelectBetweenMarkers(View(), 500);
    EXPECT_EQ(View().GetSelection(), (Selection{0, 1000}));
    Sound().Markers().Add(200, "", 0);
    Sound().Markers().Add(600, "", 0);
    const std::pair<std::uint32_t, Selection> cases[] = {
        {100, {0, 200}}, {200, {200, 600}}, {599, {200, 600}}, {600, {600, 1000}}};
    for (const auto& [frame, expected] : cases) {
        SelectBetweenMarkers(View(), frame);
        EXPECT_EQ(View().GetSelection(), expected) << frame;
    }
}

TEST_F(CursorMovesTest, AnEmptySoundRefusesEveryMove) {
    ASSERT_TRUE(workspace.NewDocument(NewSoundChoice{}));
    for (const Move move : {Left1, Right25, ExtendLeft1, MoveCursorToStart, MoveCursorToEnd,
                            SelectAll, SelectToStart, SelectToEnd, AskAndGoToCursor}) {
        EXPECT_FALSE(move(View()));
        EXPECT_EQ(View().Cursor(), 0u);
        EXPECT_FALSE(View().LastError().empty());
    }
}

}  // namespace
}  // namespace sonavel
