#include "view/sound_view.h"

#include <algorithm>

#include "view/commands/view_commands.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

using SoundViewTest = ViewTest;

TEST_F(SoundViewTest, AChangeOfTheChannelCountFitsTheLevelsAgain) {
    OpenRamp(6400, 2);
    const std::int64_t stereoLane = View().Zoom().Vertical().maximum;
    View().Zoom().Level(LevelZoomFull);
    ASSERT_TRUE(IsLevelZoomed(View().Zoom().State()));
    ASSERT_TRUE(Sound().ConvertChannels(1, ChannelChoice::kLeft));
    Document().NotifyChanged(0);
    EXPECT_EQ(View().Zoom().Vertical().maximum, 2 * stereoLane);
    EXPECT_FALSE(IsLevelZoomed(View().Zoom().State()));
    EXPECT_EQ(View().Extremes().Channels(), 1u);
}

TEST_F(SoundViewTest, ResizingKeepsBothZoomsAndSurvivesAWindowOfNothing) {
    OpenRamp(64000);
    View().Zoom().Time(TimeZoomIn);
    View().Zoom().Level(LevelZoomIn);
    View().Zoom().ScrollHorizontallyTo(400);
    const double time = View().Zoom().TimePercent();
    View().Resize(1280, 640);
    EXPECT_EQ(View().Zoom().TimePercent(), time);
    EXPECT_NEAR(View().Zoom().LevelPercent(), 150, 1);
    EXPECT_EQ(View().Zoom().Horizontal().position, 800);
    View().Resize(0, 0);
    View().Resize(10, 10);
    View().Resize(kWidth, kHeight);
    EXPECT_EQ(View().Zoom().TimePercent(), time);
    EXPECT_NEAR(View().Zoom().LevelPercent(), 150, 1);
}

TEST_F(SoundViewTest, EveryResizeStartsFromWhatTheLastZoomOrScrollLeft) {
    const struct {
        const char* name;
        std::uint32_t frames;
        unsigned channels;
        void (*zoom)(CSoundView&);
    } cases[] = {
        {"fitted", 64000, 2, [](CSoundView& view) { ZoomDefault(view); }},
        {"a short sound", 7, 1, [](CSoundView& view) { ZoomDefault(view); }},
        {"levels", 64000, 2,
         [](CSoundView& view) {
             view.Zoom().Level(LevelZoomIn);
             view.Zoom().Level(LevelZoomIn);
             view.Zoom().ScrollVertically(ScrollStep::kPageForward);
         }},
        {"time", 64000, 1,
         [](CSoundView& view) {
             view.Zoom().ToRange(1000, 7000);
             view.Zoom().ScrollHorizontally(ScrollStep::kLineForward);
         }},
        {"both to the full", 64000, 2,
         [](CSoundView& view) {
             view.Zoom().Time(TimeZoomFull);
             view.Zoom().Level(LevelZoomFull);
             view.Zoom().ScrollHorizontally(ScrollStep::kToEnd);
             view.Zoom().ScrollVertically(ScrollStep::kToEnd);
         }},
    };
    for (const auto& c : cases) {
        OpenRamp(c.frames, c.channels);
        View().Resize(904, 452);
        c.zoom(View());
        const ScrollState horizontal = View().Zoom().Horizontal();
        const ScrollState vertical = View().Zoom().Vertical();
        // An edge is dragged to nearly nothing and back.
        for (int step = -420; step <= 420; ++step) {
            const int height = 32 + std::abs(step);
            View().Resize(2 * height, height);
            SCOPED_TRACE(::testing::Message() << c.name << " at a height of " << height);
            ASSERT_EQ(View().Zoom().Horizontal(), horizontal.Resized(904, 2 * height));
            ASSERT_EQ(View().Zoom().Vertical(), vertical.Resized(420, std::max(height - 32, 1)));
        }
        EXPECT_EQ(View().Zoom().Horizontal(), horizontal) << c.name;
        EXPECT_EQ(View().Zoom().Vertical(), vertical) << c.name;
    }
}

TEST_F(SoundViewTest, AZoomOrScrollBetweenResizesHoldsForItsOwnAxis) {
    OpenRamp(64000, 2);
    View().Resize(640, 432);
    View().Zoom().Level(LevelZoomIn);
    View().Zoom().Time(TimeZoomIn);
    EXPECT_EQ(View().Zoom().Vertical(), (ScrollState{0, 300, 201, 50}));
    View().Resize(333, 133);
    EXPECT_EQ(View().Zoom().Vertical(), (ScrollState{0, 75, 50, 12}));
    EXPECT_EQ(View().Zoom().Horizontal(), (ScrollState{0, 666, 333, 0}));
    View().Zoom().ScrollHorizontallyTo(100);
    View().Resize(640, 432);
    EXPECT_EQ(View().Zoom().Vertical(), (ScrollState{0, 300, 201, 50}));
    EXPECT_EQ(View().Zoom().Horizontal(), (ScrollState{0, 1280, 640, 192}));
    // A scroll against the end is none.
    View().Zoom().ScrollHorizontally(ScrollStep::kToStart);
    View().Resize(333, 133);
    View().Zoom().ScrollHorizontally(ScrollStep::kLineBack);
    View().Resize(640, 432);
    EXPECT_EQ(View().Zoom().Horizontal(), (ScrollState{0, 1280, 640, 0}));
}

TEST_F(SoundViewTest, AWindowThatBeginsAsNothingFitsOnceItHasASize) {
    size = {1, 1};
    OpenRamp(6400, 2);
    View().Resize(kWidth, kHeight);
    EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
    EXPECT_EQ(View().Zoom().Vertical().maximum, View().State().WaveformHeight() / 2);
}

TEST_F(SoundViewTest, RulersTakeTheirRoomWhenTheSettingsChange) {
    OpenRamp(6400);
    EXPECT_EQ(View().State().WaveformWidth(), kWidth);
    ProfileFile display = folder.Display();
    ASSERT_TRUE(display.SetInteger("__SOUND_DISPLAY_ITEMS", "VERTICAL RULER", 1));
    ASSERT_TRUE(display.SetString("__SOUND_UPDATE_SECTION", "any name", "1,2,3,"));
    View().ReloadSettings();
    EXPECT_EQ(View().State().WaveformWidth(), kWidth - 20);
    EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth - 20) << "still fitted";
    EXPECT_EQ(View().Settings().colours.At(0), (Rgb{1, 2, 3}));
}

TEST_F(SoundViewTest, ACursorMoveRepaintsItsStripsAlone) {
    OpenRamp(6400);
    Watch();
    View().State().SetCursor(3000);
    EXPECT_TRUE(window.areas.empty());
    int width = 0;
    for (const Rectangle& strip : window.rectangles) width += strip.Width();
    EXPECT_LT(width, 80);
    const Rectangle cursor =
        CursorRect(View().State().Geometry().waveform, View().Zoom().Pixels(), 3000);
    EXPECT_TRUE(std::ranges::any_of(window.rectangles, [&](const Rectangle& strip) {
        return strip.Intersected(cursor) == cursor;
    }));
}

TEST_F(SoundViewTest, ASelectionChangeRepaintsEveryColumnThatLooksDifferent) {
    const Selection selections[] = {{0, 0},       {1000, 2000}, {1000, 2500}, {900, 2500},
                                    {3000, 4000}, {5000, 5000}, {0, 6400},    {6400, 6400}};
    OpenRamp(6400);
    Watch();
    const auto shown = [&](const Selection& s) {
        return SelectionRect(View().State().Geometry().waveform, View().Zoom().Pixels(), s);
    };
    for (const Selection& next : selections) {
        const Rectangle before = shown(View().State().GetSelection());
        window.rectangles.clear();
        View().State().SetSelection(next.start, next.end);
        const Rectangle after = shown(next);
        for (int x = 0; x < kWidth; ++x) {
            if (before.Contains(x, 5) == after.Contains(x, 5)) continue;
            EXPECT_TRUE(std::ranges::any_of(
                window.rectangles, [&](const Rectangle& strip) { return strip.Contains(x, 5); }))
                << "column " << x << " towards " << next.start << ".." << next.end;
        }
    }
}

TEST_F(SoundViewTest, ARangeFillsTheWidthFromItsStartOn) {
    OpenRamp(6400);
    View().Zoom().ToRange(1000, 2000);
    EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth * 64 / 10);
    EXPECT_EQ(View().Zoom().Horizontal().position, kWidth);
}

TEST_F(SoundViewTest, TheStatusFormatIsStoredAndChecked) {
    OpenRamp(100);
    const auto checked = [&](int id) { return Commands().StateOfCommand(id).checked; };
    EXPECT_TRUE(Run(view_command::kStatusSecond));
    EXPECT_EQ(folder.Options().Read().GetString("__SOUND_OPTIONS", "Status Format"), "2");
    EXPECT_TRUE(checked(view_command::kStatusSecond));
    EXPECT_FALSE(checked(view_command::kStatusTime));
    OpenRamp(100);
    EXPECT_EQ(View().Settings().statusFormat, StatusFormat::kSecond);
}

TEST_F(SoundViewTest, TheStateTextFollowsTheLengthOfTheSound) {
    OpenRamp(6400);
    Watch();
    View().ShowChosen(StatusFormat::kSample);
    View().Playing().OnPlayState("(Stopped) ", 1500);
    View().State().SetSelection(1000, 6000);
    ASSERT_TRUE(Run(view_command::kCut));
    EXPECT_EQ(window.texts.back(), "(Stopped) 1400 / 1400");
    ASSERT_TRUE(Run(view_command::kUndo));
    EXPECT_EQ(window.texts.back(), "(Stopped) 1500 / 6400");
    ASSERT_TRUE(Run(view_command::kRedo));
    EXPECT_EQ(View().Playing().StatusText(), "(Stopped) 1400 / 1400");
    // Another text is no state of the player and stays as it is.
    View().Playing().ShowStatusText("of its own");
    ASSERT_TRUE(Run(view_command::kUndo));
    EXPECT_EQ(View().Playing().StatusText(), "of its own");
}

TEST_F(SoundViewTest, PercentTextsAreReadUpToTheSign) {
    const std::pair<const char*, double> cases[] = {
        {"150%", 150}, {" 12.5 % of it", 12.5}, {"75", 75}, {"%", 0}, {"", 0}, {"abc", 0}};
    for (const auto& [text, percent] : cases) EXPECT_EQ(PercentFromText(text), percent) << text;
}

}  // namespace
}  // namespace sonavel
