// Places of a sound: markers, former selections and zooms, what is typed, and where the mouse
// snaps.
#include "view/commands/place_commands.h"

#include "sound/zero_crossing.h"
#include "view/commands/label_commands.h"
#include "view/commands/marker_commands.h"
#include "view/input/cursor_moves.h"
#include "view/input/mouse_input.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using namespace view_command;

class PlaceCommandsTest : public ViewTest {
  protected:
    PlaceCommandsTest() {
        OpenRamp(100000);
        AddMarker(View(), 60000, "late", 500);
        AddMarker(View(), 20000, "early", 0);
        View().State().SetCursor(0);
        View().ShowChosen(StatusFormat::kTime);
    }
    Selection Selected() { return View().State().GetSelection(); }
    std::uint32_t Cursor() { return View().State().Cursor(); }
};

TEST_F(PlaceCommandsTest, MarkersAreGoneToInTheOrderOfTheirPlaces) {
    for (const std::uint32_t expected : {20000u, 60000u}) {
        EXPECT_TRUE(Run(kNextMarker));
        EXPECT_EQ(Cursor(), expected);
    }
    EXPECT_FALSE(Run(kNextMarker));
    EXPECT_EQ(ended.Reason(), "There is no marker behind the cursor.");
    EXPECT_TRUE(Run(kPreviousMarker));
    EXPECT_EQ(Cursor(), 20000u);
    EXPECT_FALSE(Run(kPreviousMarker));
}

TEST_F(PlaceCommandsTest, SelectsOnToTheNextMarkerAndInsideRegions) {
    View().State().SetCursor(1000);
    for (const std::uint32_t end : {20000u, 60000u, 100000u}) {
        EXPECT_TRUE(Run(kSelectToNextMarker));
        EXPECT_EQ(Selected(), (Selection{1000, end}));
    }
    EXPECT_TRUE(SelectBetweenMarkers(View(), 60100));
    EXPECT_EQ(Selected(), (Selection{60000, 60500}));
    EXPECT_TRUE(SelectBetweenMarkers(View(), 60500));
    EXPECT_EQ(Selected(), (Selection{60000, 100000}));
}

TEST_F(PlaceCommandsTest, FormerSelectionsComeBackInTurn) {
    EXPECT_FALSE(Run(kLastSelection));
    View().State().SetSelection(10, 20);
    View().State().SetSelection(10, 30);  // goes on with it
    View().State().SetSelection(50, 60);
    View().State().SetSelection(5, 5);
    const Selection expected[] = {{50, 60}, {10, 30}, {50, 60}};
    for (const Selection& one : expected) {
        EXPECT_TRUE(Run(kLastSelection));
        EXPECT_EQ(Selected(), one);
    }
}

TEST_F(PlaceCommandsTest, ZoomsComeBackAlsoAfterAnUndo) {
    EXPECT_FALSE(Run(kPreviousZoom));
    const ScrollState whole = View().Zoom().Horizontal();
    View().Zoom().ToRange(40000, 41000);
    const ScrollState part = View().Zoom().Horizontal();
    View().State().SetSelection(40500, 40600);
    ASSERT_TRUE(Run(kCut));
    ASSERT_TRUE(Run(kUndo));
    ASSERT_EQ(View().Zoom().Horizontal(), whole);
    EXPECT_TRUE(Run(kPreviousZoom));
    EXPECT_NEAR(static_cast<double>(View().Zoom().Pixels().FrameAt(0)), 40000, 100);
    EXPECT_EQ(View().Zoom().Horizontal().maximum, part.maximum);
    EXPECT_TRUE(Run(kNextZoom));
    EXPECT_EQ(View().Zoom().Horizontal(), whole);
    EXPECT_FALSE(Run(kNextZoom));
}

TEST_F(PlaceCommandsTest, PlacesAreTypedAsAPersonSaysThem) {
    const struct {
        const char* typed;
        Selection selection;
        std::uint32_t cursor;
    } cases[] = {
        {"62.5", {62500, 62500}, 62500},
        {"0:17.25s", {17250, 17250}, 17250},
        {"441#", {441, 441}, 441},
        {"+5", {5441, 5441}, 5441},
        {"1 - 2.5", {1000, 2500}, 1000},
        {"00:00:03.000 - +0:02 (00:00:01.000)", {3000, 5000}, 3000},
        {"500", {100000, 100000}, 100000},
        {"2s to 1s", {1000, 2000}, 1000},
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(GoToTyped(View(), one.typed)) << one.typed;
        EXPECT_EQ(Selected(), one.selection) << one.typed;
        EXPECT_EQ(Cursor(), one.cursor) << one.typed;
    }
    for (const char* wrong : {"", "abc", "1:75", "1 - x", "5 apples"})
        EXPECT_TRUE(GoToTyped(View(), wrong).IsFailed()) << wrong;
    EXPECT_EQ(Selected(), (Selection{1000, 2000}));
}

TEST_F(PlaceCommandsTest, TheChosenMarkerIsTheOneThatCommandsMean) {
    View().State().ChooseMarker(1);
    EXPECT_TRUE(Run(kMarkerSelect));
    EXPECT_EQ(Selected(), (Selection{60000, 60500}));
    View().State().SetSelection(30000, 31000);
    View().State().ChooseMarker(2);
    EXPECT_TRUE(Run(kMarkerFromSelection));
    EXPECT_EQ(Sound().Markers().Find(2)->length, 1000u);
    // Del takes the marker, not the selection.
    EXPECT_TRUE(Run(kDelete));
    EXPECT_EQ(Sound().Markers().Count(), 1u);
    EXPECT_EQ(View().FrameCount(), 100000u);
    View().State().SetSelection(0, 0);
    EXPECT_FALSE(Run(kDelete));
    View().State().SetSelection(0, 10);
    EXPECT_TRUE(Run(kDelete));
    EXPECT_EQ(View().FrameCount(), 99990u);
}

TEST_F(PlaceCommandsTest, NamesAreAskedForAtTheMarker) {
    struct : SoundViewObserver {
        NameWanted wanted;
        void OnNameWanted(const NameWanted& name) override { wanted = name; }
    } asked;
    View().SetObserver(&asked);
    View().State().SetCursor(700);
    EXPECT_TRUE(Run(kDropNamedMarker));
    EXPECT_EQ(asked.wanted.id, 0u);
    EXPECT_EQ(asked.wanted.frame, 700u);
    EXPECT_TRUE(Run(kMarkerRename));  // the nearest
    EXPECT_EQ(asked.wanted.id, 2u);
    EXPECT_EQ(asked.wanted.name, "early");
    View().SetObserver(nullptr);
}

TEST_F(PlaceCommandsTest, ProposedMarksGoUnlessTheyAreKept) {
    // The ramp is quiet at its start and where it has wrapped around to zero.
    const MarkerList before = Sound().Markers();
    const std::size_t steps = Document().History().Count();
    {
        PauseProposal proposal(View());
        EXPECT_EQ(*proposal.Show({-20, 10, 0}, PauseMarks::kMarkersAtPauses), 2u);
        EXPECT_EQ(Sound().Markers().Count(), 4u);
        EXPECT_EQ(*proposal.Show({-20, 10, 0}, PauseMarks::kRegionsOfSound), 2u);
        EXPECT_EQ(Sound().Markers().Count(), 4u);
    }
    EXPECT_EQ(Sound().Markers(), before);
    EXPECT_EQ(Document().History().Count(), steps);
}

TEST_F(PlaceCommandsTest, LongPausesBecomeAsLongAsTheLengthSays) {
    // Quiet from 10000 to 13000 and from 50000 to 50400.
    for (std::uint32_t frame = 0; frame < 100000; ++frame) {
        const bool quiet = (frame >= 10000 && frame < 13000) || (frame >= 50000 && frame < 50400);
        Sound().SetSample(0, frame, quiet ? 1 : 9000);
    }
    View().State().SetSelection(5000, 60000);
    const PauseRule rule{-40, 100, 10};
    {
        PauseProposal proposal(View());
        const auto going = proposal.ShowGoing(rule, 500);
        ASSERT_TRUE(going);
        EXPECT_EQ(going->frames, 2500u);
        EXPECT_EQ(Sound().Markers().All().back().position, 10250u);
        EXPECT_EQ(Sound().Markers().All().back().length, 2500u);
    }
    EXPECT_EQ(Sound().Markers().Count(), 2u);
    ASSERT_TRUE(RemovePauses(View(), rule, 500));
    EXPECT_EQ(View().FrameCount(), 97500u);
    EXPECT_EQ(Selected(), (Selection{5000, 57500}));
    EXPECT_EQ(Sound().GetSample(0, 10499), 1);
    EXPECT_EQ(Sound().GetSample(0, 10500), 9000);
    EXPECT_FALSE(RemovePauses(View(), rule, 500));
    ASSERT_TRUE(RemovePauses(View(), rule, 0));
    EXPECT_EQ(View().FrameCount(), 96600u);
}

TEST_F(PlaceCommandsTest, TheMouseSnapsWhereItIsToldTo) {
    // A square wave of 200 frames: it passes through zero every 100 frames.
    for (std::uint32_t frame = 0; frame < 100000; ++frame)
        Sound().SetSample(0, frame, frame / 100 % 2 == 0 ? 1000 : -1000);
    View().Zoom().ToRange(0, 600);
    const ViewGeometry& geometry = View().State().Geometry();
    const auto place = [&](std::uint32_t frame, bool shift) {
        return PointerEvent{
            geometry.waveform.left + static_cast<int>(View().Zoom().Pixels().X(frame)),
            geometry.waveform.top + 10, shift, false};
    };
    const auto dragged = [&](bool shift) {
        View().State().SetSelection(0, 0);
        MouseInput mouse(View());
        mouse.Press(MouseButton::kLeft, place(190, false));
        mouse.Move(place(412, shift));
        mouse.Release(place(412, shift));
        return Selected();
    };
    EXPECT_NEAR(dragged(false).end, 412, 2);
    EXPECT_EQ(dragged(true).end, 400u);
    ASSERT_TRUE(Run(kSnapToZero));
    EXPECT_EQ(dragged(false), (Selection{200, 400}));
    EXPECT_NEAR(dragged(true).end, 412, 2);
}

TEST(ZeroCrossingTest, IsTheNearestOneWithinReach) {
    Sound sound;
    ASSERT_TRUE(sound.Create(1, 16, 8000, 1000));
    for (std::uint32_t frame = 0; frame < 1000; ++frame)
        sound.SetSample(0, frame, frame < 300 || frame >= 700 ? 50 : -50);
    const struct {
        std::uint32_t frame, reach, expected;
    } cases[] = {{310, 50, 300},  {290, 50, 300}, {690, 50, 700},  {500, 50, 500},
                 {500, 250, 300}, {20, 50, 0},    {990, 50, 1000}, {5000, 5, 1000}};
    for (const auto& one : cases)
        EXPECT_EQ(NearestZeroCrossing(sound, one.frame, one.reach), one.expected) << one.frame;
}

}  // namespace
}  // namespace sonavel
