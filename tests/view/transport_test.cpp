#include "view/commands/transport.h"

#include <algorithm>
#include <numeric>

#include "view/commands/view_commands.h"
#include "view/input/mouse_input.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using namespace view_command;

class TransportTest : public ViewTest {
  protected:
    // The samples of at most so many blocks, as frame numbers of the ramp, without the repetitions
    // of the last one that fill the last block.
    std::vector<int> Heard(int blocks = 100) {
        FakeWaveOut& out = devices.Out();
        for (; blocks > 0 && Sound().IsPlaying(); --blocks) out.Hear();
        const FileBytes bytes = out.AllPlayed();
        out.played.clear();
        std::vector<int> frames;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
            const int value = bytes[i] | bytes[i + 1] << 8;
            if (frames.empty() || frames.back() != value) frames.push_back(value);
        }
        return frames;
    }

    static std::vector<int> Frames(int start, int end) {
        std::vector<int> frames(static_cast<std::size_t>(end - start));
        std::iota(frames.begin(), frames.end(), start);
        return frames;
    }
};

TEST_F(TransportTest, PlayingFollowsAClickWhereItIsTold) {
    OpenRamp(2000, 1, 16, 100);
    const auto clicked = [&](std::uint32_t press, std::uint32_t release) {
        const ViewGeometry& geometry = View().State().Geometry();
        const auto at = [&](std::uint32_t frame) {
            return PointerEvent{
                geometry.waveform.left + static_cast<int>(View().Zoom().Pixels().X(frame)),
                geometry.waveform.top + 5, false, false};
        };
        MouseInput mouse(View());
        mouse.Press(MouseButton::kLeft, at(press));
        mouse.Move(at(release));
        mouse.Release(at(release));
        const std::vector<int> heard = Sound().IsPlaying() ? Heard() : std::vector<int>{0};
        return heard.front();
    };
    ASSERT_TRUE(Run(kPlay));
    EXPECT_EQ(clicked(1000, 1000), 0) << "off at first";
    ASSERT_TRUE(Run(kPlayFollowsClicks));
    EXPECT_EQ(clicked(700, 700), 0) << "nothing plays";
    EXPECT_FALSE(Sound().IsPlaying());
    ASSERT_TRUE(Run(kPlayToEnd));
    EXPECT_EQ(clicked(1000, 1500), 0) << "a drag selects";
    View().State().SetSelection(0, 0);
    ASSERT_TRUE(Run(kPlayToEnd));
    EXPECT_NEAR(clicked(1200, 1200), 1200, 4);
}

TEST_F(TransportTest, WhatIsTurnedOnIsStillOnAtTheNextStart) {
    OpenRamp(2000);
    for (const auto& [command, which] :
         {std::pair{int{kPlayFollowsClicks}, ViewSwitch::kPlayFollowsClicks},
          std::pair{int{kSnapToZero}, ViewSwitch::kSnapping}}) {
        for (const bool on : {true, false}) {
            ASSERT_TRUE(Run(command));
            EXPECT_EQ(Commands().StateOfCommand(command).checked, on);
            OpenRamp(2000);
            EXPECT_EQ(View().Settings().IsOn(which), on);
        }
    }
}

TEST_F(TransportTest, EveryCommandPlaysItsRange) {
    const struct {
        const char* name;
        int command;
        std::uint32_t cursor;
        Selection selection;
        int start;
        int end;
    } cases[] = {
        {"from the cursor", kPlay, 300, {300, 300}, 300, 2000},
        {"at the end from the start", kPlay, 2000, {0, 0}, 0, 2000},
        {"the selection", kPlay, 1900, {100, 130}, 100, 130},
        {"to the end, whatever is selected", kPlayToEnd, 700, {100, 200}, 0, 2000},
        {"pre-roll", kPreRoll, 1000, {0, 0}, 850, 1000},
        {"pre-roll near the start", kPreRoll, 60, {500, 600}, 0, 60},
        {"preview around the cursor", kPreviewCut, 1000, {0, 0}, 850, 1150},
        {"preview around the cursor at the end", kPreviewCut, 2000, {0, 0}, 1850, 2000},
        {"preview of a cut at the start", kPreviewCut, 9, {0, 500}, 500, 650},
        {"preview of a cut at the end", kPreviewCut, 9, {1600, 2000}, 1450, 1600},
    };
    OpenRamp(2000, 1, 16, 100);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        View().State().SetCursor(c.cursor);
        View().State().SetSelection(c.selection.start, c.selection.end);
        EXPECT_TRUE(Run(c.command));
        EXPECT_EQ(Heard(), Frames(c.start, c.end));
        EXPECT_TRUE(Sound().IsStopped());
        EXPECT_EQ(View().State().Cursor(), c.cursor);
    }
}

TEST_F(TransportTest, PreviewOfACutLeavesTheSelectionOut) {
    // The margin is a multiple of the block, so that the skip begins where a block begins.
    OpenRamp(4000, 1, 16, 171);
    View().State().SetSelection(1024, 2048);
    EXPECT_TRUE(Run(kPreviewCut));
    EXPECT_EQ(Heard(2), Frames(1024 - 256, 1024));
    // The engine goes on one sample behind the end of what it leaves out.
    EXPECT_EQ(Heard(), Frames(2049, 2048 + 256));
}

TEST_F(TransportTest, PreviewOfNothingIsRefused) {
    OpenRamp(1000);
    View().State().SetSelection(0, 1000);
    EXPECT_FALSE(Run(kPreviewCut));
    View().State().SetSelection(0, 0);
    View().State().SetCursor(0);
    EXPECT_FALSE(Run(kPreRoll));
    EXPECT_FALSE(devices.Out().open);
}

TEST_F(TransportTest, LoopedPlayingRepeatsTheSelectionUntilStop) {
    OpenRamp(2000, 1, 16, 100);
    View().State().SetSelection(256, 512);
    EXPECT_TRUE(Run(kPlayLooped));
    for (int turn = 0; turn < 8; ++turn) EXPECT_EQ(Heard(2), Frames(256, 512));
    EXPECT_TRUE(Sound().IsPlaying());
    EXPECT_TRUE(Run(kStop));
    EXPECT_TRUE(Sound().IsStopped());
    // What plays after a loop does not loop.
    for (const int command : {kPlay, kPlayToEnd}) {
        EXPECT_TRUE(Run(command));
        EXPECT_FALSE(Sound().IsLooping());
        View().State().SetSelection(0, 0);
        EXPECT_TRUE(Run(kPlayLooped));
        EXPECT_TRUE(Sound().IsLooping());
    }
}

TEST_F(TransportTest, SpacePlaysAndStopsAndEnterPauses) {
    OpenRamp(2000, 1, 16, 100);
    EXPECT_TRUE(Run(kSpaceKey));
    EXPECT_TRUE(Sound().IsPlaying());
    EXPECT_TRUE(Run(kPause));
    EXPECT_TRUE(Sound().IsPaused());
    EXPECT_FALSE(Run(kStop)) << "Stop works on what plays; a pause is left by playing on";
    EXPECT_TRUE(Run(kSpaceKey));
    EXPECT_TRUE(Sound().IsPlaying());
    EXPECT_TRUE(Run(kSpaceKey));
    EXPECT_TRUE(Sound().IsStopped());
    EXPECT_FALSE(Run(kPause));
    EXPECT_EQ(ended.Reason(), "Nothing is playing.");
}

TEST_F(TransportTest, TheViewShowsPositionAndStateOfThePlayer) {
    OpenRamp(6400);
    Watch();
    Run(kPlay);
    EXPECT_EQ(window.transportChanges, 1);
    devices.Out().Hear(5);  // 640 frames are 64 pixels
    ASSERT_TRUE(View().Playing().PlayPosition());
    EXPECT_EQ(*View().Playing().PlayPosition(),
              (Rectangle{64, 0, 65, View().State().Geometry().waveform.bottom}));
    EXPECT_EQ(window.texts.back().rfind("(Playing) ", 0), 0u);
    // Paused, the column stays.
    Run(kPause);
    EXPECT_TRUE(View().Playing().PlayPosition());
    EXPECT_EQ(window.texts.back().rfind("(Pausing) ", 0), 0u);
    Run(kPause);
    Run(kStop);
    EXPECT_FALSE(View().Playing().PlayPosition());
    EXPECT_EQ(window.texts.back().rfind("(Stopped) ", 0), 0u);
    EXPECT_EQ(window.transportChanges, 4);
}

TEST_F(TransportTest, EveryReportRepaintsWhereThePlayLineWasAndWhereItIs) {
    OpenRamp(6400);
    Run(kPlay);
    Watch();
    const auto repainted = [&](int x) {
        const Rectangle column{x, 0, x + 1, View().State().Geometry().waveform.bottom};
        return std::ranges::find(window.rectangles, column) != window.rectangles.end();
    };
    View().Playing().OnPlayPosition(2 * 1000, 2 * 6400);
    EXPECT_TRUE(repainted(100));
    window.rectangles.clear();
    View().Playing().OnPlayPosition(2 * 1010, 2 * 6400);
    EXPECT_TRUE(repainted(100));
    EXPECT_TRUE(repainted(101));
    window.rectangles.clear();
    View().Playing().OnPlayPosition(2 * 6400, 2 * 6400);
    EXPECT_TRUE(repainted(101));
    EXPECT_FALSE(View().Playing().PlayPosition());
}

TEST_F(TransportTest, APreviewShowsItsStateAndItsPeaksAsTheSoundDoes) {
    OpenRamp(6400, 1, 8);
    Watch();
    const std::vector<float> samples(2000, 16384.0f);
    const auto play = [&] {
        ASSERT_TRUE(Document().MakePreview(samples, CSoundDoc::PreviewPlay::kYes, 2000,
                                           CSoundDoc::PreviewFormat::kComputedStereo));
    };
    play();
    EXPECT_EQ(window.texts.back(), "(Playing) 1000 / 1000");
    EXPECT_EQ(window.peaks.back(), std::pair(64, 64)) << "half of what the meter takes as full";
    devices.Out().Hear();
    EXPECT_FALSE(View().Playing().PlayPosition());
    EXPECT_FALSE(View().Playing().PlayFrame());
    Document().Preview().Stop(CWavePlayer::StopReport::kSilent);
    EXPECT_EQ(window.texts.back(), "(Stopped) 1000 / 1000");
    EXPECT_EQ(window.peaks.back(), std::pair(0, 0));

    play();
    devices.Out().Lose(kWaveNoDriver);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{"no device driver present"});
    EXPECT_EQ(window.texts.back().rfind("(Stopped) ", 0), 0u);
    EXPECT_EQ(window.peaks.back(), std::pair(0, 0));
}

TEST_F(TransportTest, PlayScrollingKeepsThePositionInTheMiddleOfAZoomedWindow) {
    SetOption("__SOUND_GENERAL_OPTIONS", "PLAY SCROLLING", 1);
    OpenRamp(64000);
    View().Zoom().Time(TimeZoomFull);
    View().State().SetCursor(0);
    Run(kPlay);
    for (int report = 0; report < 60; ++report) devices.Out().Hear();
    ASSERT_TRUE(View().Playing().PlayPosition());
    // It follows every third report, so up to two blocks behind.
    EXPECT_GE(View().Playing().PlayPosition()->left, kWidth / 2);
    EXPECT_LE(View().Playing().PlayPosition()->left, kWidth / 2 + 2 * 128);
    EXPECT_GT(View().Zoom().Horizontal().position, 5000);
}

TEST_F(TransportTest, PlayScrollingDriftsToTheMiddleAboveEightFramesAPixel) {
    SetOption("__SOUND_GENERAL_OPTIONS", "PLAY SCROLLING", 1);
    OpenRamp(64000);
    View().Zoom().Time(TimeZoomIn);
    View().Zoom().Time(TimeZoomIn);
    ASSERT_EQ(View().Zoom().TimeRatio(), 25);
    View().State().SetCursor(16000);
    View().Zoom().ScrollHorizontallyTo(640);  // the cursor stands at the left edge
    Run(kPlay);
    std::vector<std::int64_t> scrolled;
    for (int report = 0; report < 30; ++report) {
        devices.Out().Hear();
        scrolled.push_back(View().Zoom().Horizontal().position);
    }
    // The sound moves by 5.12 pixels a report, its place in the window by 2.
    EXPECT_NEAR(static_cast<double>(scrolled.back()), 640 + 30 * 3.12, 12);
    EXPECT_NE(scrolled[9], scrolled[6]);
    int moves = 0;
    for (std::size_t i = 1; i < scrolled.size(); ++i) moves += scrolled[i] != scrolled[i - 1];
    EXPECT_LE(moves, 10) << "only every third report scrolls";
}

TEST_F(TransportTest, AReportOfTheEndTakesThePlayLineAway) {
    OpenRamp(6400);
    Run(kPlay);
    View().Playing().OnPlayPosition(12798, 12800);
    EXPECT_EQ(View().Playing().PlayFrame(), 6399u);
    View().Playing().OnPlayPosition(12800, 12800);
    EXPECT_FALSE(View().Playing().PlayFrame());
}

TEST_F(TransportTest, WithoutSoundNothingPlays) {
    OpenRamp(0);
    for (const int command : {kPlay, kPlayLooped, kPlayToEnd, kPreviewCut, kPreRoll, kSpaceKey}) {
        EXPECT_FALSE(Run(command));
        EXPECT_EQ(ended.Reason(), "The document has no sound.");
    }
}

}  // namespace
}  // namespace sonavel
