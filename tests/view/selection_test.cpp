// A selection whose start was moved past its end works as the one between its two ends.
#include "view/state/selection.h"

#include "document/clip_image.h"
#include "view/commands/view_commands.h"
#include "view/input/cursor_moves.h"
#include "view/input/mouse_input.h"
#include "view/state/status_texts.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using namespace view_command;

class PassedSelectionTest : public ViewTest {
  protected:
    static constexpr Selection kRange{3000, 3300};

    // A document with the range selected, in order or with its start moved past its end.
    void OpenSelected(bool passed) {
        OpenRamp(6400, 1, 16, 100);
        Sound().Markers().Add(3100, "inside", 0);
        View().State().SetCursor(5);
        View().State().SetSelection(kRange.start, passed ? kRange.start : kRange.end);
        if (passed) View().State().SetSelectionStart(kRange.end);
        EXPECT_EQ(View().State().GetSelection(), kRange);
        EXPECT_TRUE(View().State().HasSelection());
    }

    struct State {
        FileBytes bytes;
        Selection selection;
        std::uint32_t cursor;
        MarkerList markers;
        ScrollState horizontal;
        std::vector<std::uint8_t> clipboard;
        std::uint32_t shownStart, shownEnd, markerPosition, markerLength;
        std::string error;

        bool operator==(const State&) const = default;
    };
    State After(bool passed, int command) {
        OpenSelected(passed);
        EXPECT_TRUE(clipboard.SetImage(clip_));
        shownRange = {};
        const auto markers = QuestionOfMarkers(View(), MarkerDialogRequest::Start::kAdd, 0);
        RunAnswered(command);
        return {Bytes(),
                View().State().GetSelection(),
                View().State().Cursor(),
                Sound().Markers(),
                View().Zoom().Horizontal(),
                *clipboard.GetImage(),
                shownRange.startFrame,
                shownRange.endFrame,
                markers->newPosition,
                markers->newLength,
                ended.Reason()};
    }
    std::vector<std::uint8_t> Heard(bool passed, int command) {
        OpenSelected(passed);
        EXPECT_TRUE(Run(command)) << ended.Reason();
        for (int block = 0; block < 20 && Sound().IsPlaying(); ++block) devices.Out().Hear();
        Sound().Stop(CWavePlayer::StopReport::kSilent);
        const FileBytes bytes = devices.Out().AllPlayed();
        devices.Out().played.clear();
        return {bytes.begin(), bytes.end()};
    }

    std::vector<std::uint8_t> clip_ =
        *WriteClipImage(MakePcmFormat(1, 16, 100), std::vector<std::uint8_t>(200, 7));
};

TEST_F(PassedSelectionTest, EveryCommandWorksOnWhatLiesBetweenTheEnds) {
    for (const int command :
         {kCut, kCopy, kDelete, kPaste, kPasteReplicate, kPasteOverwrite, kPasteBlockOverwrite,
          kPasteBlockCopy, kPasteNew, kMix, kCrossfadeMix, kZoomSelection, kZoomTimeIn,
          kZoomTimeFull, kSelectToStart, kSelectToEnd}) {
        SCOPED_TRACE(command);
        const State passed = After(true, command);
        EXPECT_TRUE(passed == After(false, command));
        EXPECT_NE(passed.error, "Nothing is selected.");
    }
    for (const int command : {kPlay, kPlayLooped, kPreviewCut}) {
        SCOPED_TRACE(command);
        const auto heard = Heard(true, command);
        EXPECT_FALSE(heard.empty());
        EXPECT_EQ(heard, Heard(false, command));
    }
}

TEST_F(PassedSelectionTest, TheStatusTextAndTheEdgesUnderThePointerAreThoseOfTheRange) {
    OpenSelected(true);
    EXPECT_EQ(SelectionText(StatusFormat::kSample, View().State().GetSelection(), 100),
              "3000 - 3300 (300)");
    MouseInput mouse(View());
    EXPECT_EQ(mouse.TargetAt(301, 100), MouseTarget::kSelectionStart);
    EXPECT_EQ(mouse.TargetAt(331, 100), MouseTarget::kSelectionEnd);
    // Dragging the right edge keeps the left one.
    mouse.Press(MouseButton::kLeft, {331, 100});
    mouse.Release({341, 100});
    EXPECT_EQ(View().State().GetSelection(), (Selection{3000, 3410}));
}

TEST_F(PassedSelectionTest, TheEndsStayForTheNextMoveAndAnEditLeavesThemInOrder) {
    OpenSelected(true);
    View().State().SetCursor(3300);
    ASSERT_TRUE(Run(kExtendRight));  // ten frames a pixel
    EXPECT_EQ(View().State().GetSelectionEnds(), (SelectionEnds{3310, 3000}));
    ASSERT_TRUE(Run(kExtendLeftFar));
    EXPECT_EQ(View().State().GetSelectionEnds(), (SelectionEnds{3060, 3000}));
    for (int move = 0; move < 3; ++move) ASSERT_TRUE(Run(kExtendLeftFar));
    EXPECT_EQ(View().State().GetSelectionEnds(), (SelectionEnds{2310, 3000}));
    ASSERT_TRUE(clipboard.SetImage(clip_));
    ASSERT_TRUE(Run(kPaste));
    EXPECT_EQ(View().State().GetSelectionEnds(), (SelectionEnds{2310, 2410}));
}

}  // namespace
}  // namespace sonavel
