#include "view/input/cursor_moves.h"

#include "view/view_fixture.h"

namespace sonavel {
namespace {

using CursorMovesTest = ViewTest;
using Move = Outcome (*)(CSoundView&);

template <Outcome (*kFunction)(CSoundView&, int, MoveMode), int kPixels, MoveMode kMode>
Outcome MoveBy(CSoundView& view) {
    return kFunction(view, kPixels, kMode);
}
constexpr Move kLeft1 = MoveBy<MoveCursorLeft, 1, MoveMode::kCollapse>;
constexpr Move kLeft25 = MoveBy<MoveCursorLeft, 25, MoveMode::kCollapse>;
constexpr Move kExtendLeft1 = MoveBy<MoveCursorLeft, 1, MoveMode::kExtend>;
constexpr Move kExtendLeft25 = MoveBy<MoveCursorLeft, 25, MoveMode::kExtend>;
constexpr Move kRight1 = MoveBy<MoveCursorRight, 1, MoveMode::kCollapse>;
constexpr Move kRight25 = MoveBy<MoveCursorRight, 25, MoveMode::kCollapse>;
constexpr Move kExtendRight1 = MoveBy<MoveCursorRight, 1, MoveMode::kExtend>;
constexpr Move kExtendRight25 = MoveBy<MoveCursorRight, 25, MoveMode::kExtend>;

TEST_F(CursorMovesTest, MovesAtTenFramesAPixelLeaveCursorAndSelectionAsStated) {
    const struct {
        const char* name;
        Move move;
        std::uint32_t cursor;
        Selection selection;
        std::uint32_t newCursor;
        SelectionEnds newEnds;
    } cases[] = {
        {"left collapses", kLeft1, 100, {50, 200}, 90, {90, 90}},
        {"rewind", kLeft25, 1000, {0, 0}, 750, {750, 750}},
        {"left onto 0", kLeft1, 10, {10, 10}, 0, {0, 0}},
        {"left past 0 stops at 1", kLeft1, 5, {5, 5}, 1, {1, 1}},
        {"rewind at 0 goes to 1", kLeft25, 0, {0, 0}, 1, {1, 1}},
        {"extending from a collapsed selection", kExtendLeft1, 100, {100, 100}, 90, {90, 100}},
        {"extending behind the start", kExtendLeft1, 500, {100, 1000}, 490, {100, 1000}},
        {"extending onto the start", kExtendLeft1, 110, {100, 1000}, 100, {100, 1000}},
        {"extending before the start", kExtendLeft25, 100, {100, 1000}, 1, {1, 1000}},
        {"right collapses", kRight1, 100, {50, 200}, 110, {110, 110}},
        {"forward", kRight25, 1000, {0, 0}, 1250, {1250, 1250}},
        {"right stops at the end", kRight25, 6395, {0, 0}, 6400, {6400, 6400}},
        {"extending right moves the start", kExtendRight1, 100, {100, 300}, 110, {110, 300}},
        {"also inside the selection", kExtendRight25, 500, {100, 1000}, 750, {750, 1000}},
        {"also past the end", kExtendRight1, 100, {100, 100}, 110, {110, 100}},
        {"not before the start", kExtendRight1, 50, {100, 1000}, 60, {100, 1000}},
    };
    OpenRamp(6400);
    ASSERT_EQ(View().Zoom().TimeRatio(), 10);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        View().State().SetCursor(c.cursor);
        View().State().SetSelection(c.selection.start, c.selection.end);
        EXPECT_TRUE(c.move(View()));
        EXPECT_EQ(View().State().Cursor(), c.newCursor);
        EXPECT_EQ(View().State().GetSelectionEnds(), c.newEnds);
    }
}

TEST_F(CursorMovesTest, LeavingTheWindowScrollsByThreeSteps) {
    const struct {
        const char* name;
        Move move;
        std::uint32_t cursor;
        std::int64_t newPosition;
    } cases[] = {
        {"left out of the window", kLeft1, 1000, 997},
        {"one pixel outside counts as inside", kLeft1, 1001, 1000},
        {"within", kLeft1, 1300, 1000},
        {"right out of the window", kRight1, 1641, 1003},
        {"on the right edge", kRight1, 1640, 1000},
        {"far left", kLeft25, 1000, 925},
        {"far right", kRight25, 1640, 1075},
    };
    OpenRamp(6400);
    View().Zoom().Time(TimeZoomFull);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        View().State().SetCursor(c.cursor);
        View().Zoom().ScrollHorizontallyTo(1000);
        ASSERT_EQ(View().Zoom().Horizontal().position, 1000);
        EXPECT_TRUE(c.move(View()));
        EXPECT_EQ(View().Zoom().Horizontal().position, c.newPosition);
    }
}

TEST_F(CursorMovesTest, ScrollingStopsAtBothEndsOfTheRange) {
    OpenRamp(6400);
    View().Zoom().Time(TimeZoomFull);
    View().Zoom().ScrollHorizontallyTo(10);
    View().State().SetCursor(5);
    EXPECT_TRUE(kLeft25(View()));
    EXPECT_EQ(View().Zoom().Horizontal().position, 0);
    View().Zoom().ScrollHorizontallyTo(6400);
    View().State().SetCursor(6400);
    EXPECT_TRUE(kRight25(View()));
    EXPECT_EQ(View().Zoom().Horizontal().position, View().Zoom().Horizontal().LastPosition());
    EXPECT_EQ(View().State().Cursor(), 6400u);
}

TEST_F(CursorMovesTest, StartAndEndDropTheSelectionToZeroAndScrollThere) {
    OpenRamp(6400);
    View().Zoom().Time(TimeZoomFull);
    View().State().SetSelection(100, 200);
    EXPECT_TRUE(MoveCursorToEnd(View()));
    EXPECT_EQ(View().State().Cursor(), 6400u);
    EXPECT_EQ(View().State().GetSelection(), Selection{});
    EXPECT_EQ(View().Zoom().Horizontal().position, View().Zoom().Horizontal().LastPosition());
    EXPECT_TRUE(View().Zoom().IsFrameInSight(6400));
    View().State().SetSelection(100, 200);
    EXPECT_TRUE(MoveCursorToStart(View()));
    EXPECT_EQ(View().State().Cursor(), 0u);
    EXPECT_EQ(View().State().GetSelection(), Selection{});
    EXPECT_EQ(View().Zoom().Horizontal().position, 0);
    OpenRamp(6400, 1, 8);
    View().Zoom().Time(TimeZoomFull);
    EXPECT_TRUE(MoveCursorToEnd(View()));
    EXPECT_TRUE(View().Zoom().IsFrameInSight(6400)) << "whatever a sample takes";
}

TEST_F(CursorMovesTest, SelectingToTheEndsKeepsTheOtherEnd) {
    OpenRamp(6400);
    View().Zoom().Time(TimeZoomFull);
    View().State().SetCursor(100);
    EXPECT_TRUE(SelectToEnd(View()));
    EXPECT_EQ(View().State().GetSelection(), (Selection{100, 6400}));
    EXPECT_EQ(View().State().Cursor(), 6400u);
    EXPECT_TRUE(View().Zoom().IsFrameInSight(6400));
    View().State().SetSelection(200, 300);
    EXPECT_TRUE(SelectToStart(View()));
    EXPECT_EQ(View().State().GetSelection(), (Selection{0, 300}));
    EXPECT_EQ(View().State().Cursor(), 0u);
    EXPECT_TRUE(View().Zoom().IsFrameInSight(0));
    View().State().SetCursor(77);
    EXPECT_TRUE(SelectAll(View()));
    EXPECT_EQ(View().State().GetSelection(), (Selection{0, 6400}));
    EXPECT_EQ(View().State().Cursor(), 77u);
}

TEST_F(CursorMovesTest, GoToCursorTakesAFrameOrATimeAndShowsIt) {
    using Unit = GoToChoice::Unit;
    const std::pair<GoToChoice, std::uint32_t> cases[] = {{{Unit::kFrame, 5000, 0}, 5000},
                                                          {{Unit::kFrame, 9999, 0}, 6400},
                                                          {{Unit::kTime, 0, 2.5}, 2500},
                                                          {{Unit::kTime, 0, -1}, 0},
                                                          {{Unit::kTime, 0, 1e12}, 6400}};
    OpenRamp(6400);
    View().Zoom().Time(TimeZoomFull);
    for (const auto& [choice, frame] : cases) {
        SCOPED_TRACE(frame);
        View().State().SetSelection(10, 20);
        EXPECT_TRUE(GoToCursor(View(), choice));
        EXPECT_EQ(View().State().Cursor(), frame);
        EXPECT_EQ(View().State().GetSelection(), (Selection{frame, frame}));
        EXPECT_TRUE(View().Zoom().IsFrameInSight(frame));
    }
    EXPECT_EQ(QuestionOfGoTo(View())->cursorFrame, 6400u);
}

TEST_F(CursorMovesTest, SelectsBetweenTheNearestMarkersOrToTheEnds) {
    OpenRamp(1000);
    EXPECT_TRUE(SelectBetweenMarkers(View(), 500));
    EXPECT_EQ(View().State().GetSelection(), (Selection{0, 1000}));
    Sound().Markers().Add(200, "", 0);
    Sound().Markers().Add(600, "", 0);
    const std::pair<std::uint32_t, Selection> cases[] = {
        {100, {0, 200}}, {200, {200, 600}}, {599, {200, 600}}, {600, {600, 1000}}};
    for (const auto& [frame, expected] : cases) {
        EXPECT_TRUE(SelectBetweenMarkers(View(), frame));
        EXPECT_EQ(View().State().GetSelection(), expected) << frame;
    }
}

TEST_F(CursorMovesTest, AnEmptySoundRefusesEveryMove) {
    OpenRamp(0);
    for (const Move move : {kLeft1, kRight25, kExtendLeft1, MoveCursorToStart, MoveCursorToEnd,
                            SelectAll, SelectToStart, SelectToEnd}) {
        EXPECT_EQ(move(View()), Failed("The document has no sound."));
        EXPECT_EQ(View().State().Cursor(), 0u);
    }
    EXPECT_EQ(QuestionOfGoTo(View()).Reason(), "The document has no sound.");
    EXPECT_FALSE(QuestionOfUserZoom(View()));
}

}  // namespace
}  // namespace sonavel
