#include "view/input/mouse_input.h"

#include "view/commands/marker_commands.h"
#include "view/draw/marker_strip.h"
#include "view/view_fixture.h"

namespace sonavel {
namespace {

class MouseInputTest : public ViewTest {
  protected:
    // A frame a pixel, and frame 1000 at the left edge.
    void ZoomAndScroll() {
        View().Zoom().Time(TimeZoomFull);
        View().Zoom().ScrollHorizontallyTo(1000);
    }
    static PointerEvent At(int x, int y = 100) { return {x, y, false, false}; }
    static PointerEvent ShiftAt(int x) { return {x, 100, true, false}; }
    static PointerEvent ControlAt(int x) { return {x, 100, false, true}; }

    // On a sound of ten frames a pixel.
    MouseInput mouse = [this] {
        OpenRamp(6400);
        return MouseInput(View());
    }();
};

TEST_F(MouseInputTest, ClickDragShiftAndEdgesSelect) {
    View().State().SetSelection(10, 20);
    mouse.Press(MouseButton::kLeft, At(100));
    EXPECT_FALSE(View().State().HasSelection());
    mouse.Move(At(200));
    EXPECT_EQ(View().State().GetSelection(), (Selection{1000, 2000}));
    mouse.Release(At(210));
    mouse.Move(At(300));
    EXPECT_EQ(View().State().GetSelection(), (Selection{1000, 2100})) << "no button is down";

    mouse.Press(MouseButton::kLeft, ShiftAt(110));
    mouse.Release(ShiftAt(110));
    EXPECT_EQ(View().State().GetSelection(), (Selection{1100, 2100}));

    mouse.Press(MouseButton::kLeft, At(212));
    EXPECT_EQ(View().State().GetSelection(), (Selection{1100, 2100}))
        << "a press on an edge moves nothing";
    mouse.Release(At(50));
    EXPECT_EQ(View().State().GetSelection(), (Selection{500, 1100}));
    EXPECT_EQ(View().State().Cursor(), 1000u);
}

TEST_F(MouseInputTest, ThePointerFindsWhatLiesUnderIt) {
    ProfileFile display = folder.Display();
    for (const char* key : {"HORIZONTAL RULER", "VERTICAL RULER"})
        ASSERT_TRUE(display.SetInteger("__SOUND_DISPLAY_ITEMS", key, 1));
    View().ReloadSettings();
    View().State().SetSelection(1000, 1020);
    Sound().Markers().Add(3000, "", 0);
    const ViewGeometry& g = View().State().Geometry();
    const int flag = static_cast<int>(View().Zoom().Pixels().X(3000));
    const int start = static_cast<int>(View().Zoom().Pixels().X(1000)) + 1;
    const struct {
        int x, y;
        MouseTarget target;
    } cases[] = {
        {10, 10, MouseTarget::kWaveform},
        {start, 10, MouseTarget::kSelectionStart},
        {start - 3, 10, MouseTarget::kSelectionStart},
        {start - 4, 10, MouseTarget::kWaveform},
        {start + 5, 10, MouseTarget::kSelectionEnd},
        {flag, g.markerStrip.top, MouseTarget::kMarkerFlag},
        {flag + kMarkerFlagWidth, g.markerStrip.top, MouseTarget::kMarkerStrip},
        {10, g.horizontalRuler.top, MouseTarget::kHorizontalRuler},
        {g.verticalRuler.left, 10, MouseTarget::kVerticalRuler},
        {5, kHeight - 5, MouseTarget::kTimeZoomButton},
        {27, kHeight - 5, MouseTarget::kLevelZoomButton},
        {kWidth - 5, kHeight - 5, MouseTarget::kZoomerButton},
        {-5, -5, MouseTarget::kNothing},
    };
    for (const auto& c : cases) EXPECT_EQ(mouse.TargetAt(c.x, c.y), c.target) << c.x << "," << c.y;
}

TEST_F(MouseInputTest, DraggingPastAnEdgeScrollsOnAndSelectsOn) {
    ZoomAndScroll();
    mouse.Press(MouseButton::kLeft, At(600));
    mouse.Move(At(kWidth + 30));
    EXPECT_EQ(View().State().GetSelection(), (Selection{1600, 1640}));
    mouse.Tick();
    EXPECT_EQ(View().Zoom().Horizontal().position, 1030);
    EXPECT_EQ(View().State().GetSelection(), (Selection{1600, 1670}));
    mouse.Move(At(-500));
    mouse.Tick();
    EXPECT_EQ(View().Zoom().Horizontal().position, 970) << "no faster than 60 pixels";
    EXPECT_EQ(View().State().GetSelection(), (Selection{970, 1600}));
    mouse.Cancel();
    mouse.Tick();
    EXPECT_EQ(View().Zoom().Horizontal().position, 970);
}

TEST_F(MouseInputTest, RightClickAsksForTheMenuThatFits) {
    EXPECT_EQ(mouse.Press(MouseButton::kRight, At(10)), MouseRequest::kContextMenuNormal);
    View().State().SetSelection(3000, 4000);
    EXPECT_EQ(mouse.Press(MouseButton::kRight, At(10)), MouseRequest::kContextMenuSelection);
    EXPECT_EQ(View().State().GetSelection(), (Selection{3000, 4000}));
}

TEST_F(MouseInputTest, ZoomButtonsZoomInOutAndAsk) {
    mouse.Press(MouseButton::kLeft, At(5, kHeight - 5));
    EXPECT_EQ(View().Zoom().Horizontal().maximum, 2 * kWidth);
    mouse.Press(MouseButton::kRight, At(5, kHeight - 5));
    EXPECT_EQ(View().Zoom().Horizontal().maximum, kWidth);
    const std::int64_t height = View().Zoom().Vertical().maximum;
    mouse.Press(MouseButton::kLeft, At(27, kHeight - 5));
    EXPECT_EQ(View().Zoom().Vertical().maximum, height * 3 / 2);
    EXPECT_EQ(mouse.Press(MouseButton::kLeft, At(kWidth - 5, kHeight - 5)),
              MouseRequest::kUserZoom);
    EXPECT_EQ(QuestionOfUserZoom(View())->endSample, 6400);
}

TEST_F(MouseInputTest, AMarkerIsDraggedByItsFlagAndEditedByADoubleClick) {
    Sound().Markers().Add(3000, "m", 77);
    const int y = View().State().Geometry().markerStrip.top + 2;
    mouse.Press(MouseButton::kLeft, At(302, y));
    mouse.Move(At(352, y));
    mouse.Release(At(352, y));
    EXPECT_EQ(Sound().Markers().Find(1)->position, 3500u);
    EXPECT_EQ(Sound().Markers().Find(1)->length, 77u);
    EXPECT_EQ(Sound().Markers().Find(1)->name, "m");
    EXPECT_TRUE(Document().GetModified());
    EXPECT_EQ(View().State().Cursor(), 0u);
    EXPECT_EQ(mouse.DoubleClick(At(352, y)), MouseRequest::kEditMarker);
    EXPECT_EQ(mouse.MarkerAt(352, y), 1u);
    mouse.DoubleClick(At(100));
    EXPECT_EQ(View().State().GetSelection(), (Selection{0, 3500}));

    mouse.Press(MouseButton::kLeft, At(352, y));
    mouse.Move(At(99999, y));
    mouse.Release(At(99999, y));
    EXPECT_EQ(Sound().Markers().Find(1)->position, Sound().GetFrameCount() - 77);
    EXPECT_EQ(Sound().Markers().Find(1)->length, 77u);
    EXPECT_FALSE(mouse.IsDragging());
}

TEST_F(MouseInputTest, ADragOfAMarkerIsOneUndoStepHoweverItEnds) {
    Sound().Markers().Add(3000, "m", 0);
    Document().SetModified(false);
    const int y = View().State().Geometry().markerStrip.top + 2;
    const auto drag = [&](int from, std::initializer_list<int> places) {
        mouse.Press(MouseButton::kLeft, At(from, y));
        for (const int x : places) mouse.Move(At(x, y));
    };
    const auto position = [&] { return Sound().Markers().Find(1)->position; };
    drag(302, {310, 402, 302});
    mouse.Release(At(302, y));
    EXPECT_EQ(Document().History().Count(), 0u) << "back where it was";
    EXPECT_FALSE(Document().GetModified());
    drag(302, {310, 352});
    mouse.Release(At(362, y));
    drag(362, {402});
    mouse.Cancel();
    drag(402, {502});
    Document().EndMarkerEdit();
    EXPECT_EQ(Document().History().Count(), 3u) << "as closing ends it";
    for (const std::uint32_t before : {4000u, 3600u, 3000u}) {
        EXPECT_TRUE(Run(view_command::kUndo));
        EXPECT_EQ(position(), before);
    }
    drag(302, {310});
    EXPECT_TRUE(RemoveMarker(View(), 1));
    mouse.Move(At(320, y));
    mouse.Release(At(330, y));
    EXPECT_TRUE(Sound().Markers().Empty()) << "a marker that is gone is not dragged on";
}

TEST_F(MouseInputTest, APressBesideTheTimeOrDuringADragSelectsNothing) {
    ProfileFile display = folder.Display();
    ASSERT_TRUE(display.SetInteger("__SOUND_DISPLAY_ITEMS", "VERTICAL RULER", 1));
    View().ReloadSettings();
    View().State().SetSelection(1000, 2000);
    const int ruler = View().State().Geometry().verticalRuler.left + 2;
    mouse.Press(MouseButton::kLeft, At(ruler));
    EXPECT_FALSE(mouse.IsDragging());
    EXPECT_EQ(View().State().GetSelection(), (Selection{1000, 2000}));
    mouse.Press(MouseButton::kLeft, At(300));
    EXPECT_EQ(mouse.Press(MouseButton::kRight, At(400)), MouseRequest::kNone);
    mouse.Press(MouseButton::kLeft, At(400));
    mouse.Release(At(500));
    EXPECT_EQ(View().State().GetSelection().start, View().Zoom().Pixels().NearestFrameAt(300));
}

TEST_F(MouseInputTest, TheWheelZoomsAroundTheFrameUnderThePointer) {
    for (const int x : {1, 200, 320, 639}) {
        ZoomDefault(View());
        View().State().SetSelection(5000, 5001);  // which a menu zoom would centre on
        const std::int64_t frame = View().Zoom().Pixels().NearestFrameAt(x);
        for (int notch = 0; notch < 3; ++notch) mouse.Wheel(ControlAt(x), 1);
        EXPECT_EQ(View().Zoom().Horizontal().maximum, 8 * kWidth);
        EXPECT_EQ(View().Zoom().Pixels().X(frame), x);
        for (int notch = 0; notch < 2; ++notch) mouse.Wheel(ControlAt(x), -1);
        EXPECT_EQ(View().Zoom().Pixels().X(frame), x);
    }
}

TEST_F(MouseInputTest, TheWheelScrollsTimeAndZoomsLevel) {
    ZoomAndScroll();
    mouse.Wheel(At(100), -1);
    EXPECT_EQ(View().Zoom().Horizontal().position, 1064);
    mouse.Wheel(At(100), 0.5);
    EXPECT_EQ(View().Zoom().Horizontal().position, 1032);
    const std::int64_t height = View().Zoom().Vertical().maximum;
    mouse.Wheel({100, 100, true, true}, 0.5);
    EXPECT_EQ(View().Zoom().Vertical().maximum, height) << "half a notch is no step";
    mouse.Wheel({100, 100, true, true}, 0.5);
    EXPECT_EQ(View().Zoom().Vertical().maximum, height * 3 / 2);
    EXPECT_TRUE(IsLevelZoomed(View().Zoom().State()));
}

TEST_F(MouseInputTest, TheMiddleButtonPans) {
    ZoomAndScroll();
    mouse.Press(MouseButton::kMiddle, At(300));
    mouse.Move(At(250));
    EXPECT_EQ(View().Zoom().Horizontal().position, 1050);
    mouse.Move(At(310));
    EXPECT_EQ(View().Zoom().Horizontal().position, 990);
    mouse.Release(At(310));
    mouse.Move(At(0));
    EXPECT_EQ(View().Zoom().Horizontal().position, 990);
}

TEST_F(MouseInputTest, SampleValuesShowUnlessTheSoundPlays) {
    Watch();
    mouse.Move(At(12));
    EXPECT_EQ(window.texts, std::vector<std::string>{"(Sample Value) Left,Right : 120"});
    ASSERT_TRUE(Sound().Play(0));
    window.texts.clear();
    mouse.Move(At(13));
    EXPECT_TRUE(window.texts.empty());
}

TEST(MarkerStrip, LabelsNeverTouchAndRegionsReachAcrossTheEdges) {
    MarkerList markers;
    markers.Add(100, "first", 0);    // flag at x 0
    markers.Add(300, "near", 0);     // 20 pixels on: inside the first label
    markers.Add(600, "far", 1000);   // with a region that leaves the strip
    markers.Add(0, "outside", 250);  // left of the strip, its region reaches in
    const PixelMap map(2000, ScrollState{0, 200, 100, 10});
    const Rectangle strip = {0, 50, 100, 60};
    const auto places = LayOutMarkerStrip(strip, map, markers, [](std::string_view text) {
        return static_cast<int>(text.size()) * 6;
    });
    ASSERT_EQ(places.size(), 4u);
    EXPECT_EQ(places[0].flag, (Rectangle{0, 50, 6, 60}));
    EXPECT_EQ(places[0].label, "first");
    EXPECT_LE(places[0].labelEnd, places[1].flag.left);
    EXPECT_EQ(places[1].flag.left, 20);
    EXPECT_EQ(places[1].label, "");
    EXPECT_EQ(places[2].label, "far");
    EXPECT_EQ(places[2].labelEnd, strip.right);
    EXPECT_EQ(places[2].region.left, 50);
    EXPECT_EQ(places[2].region.right, 100);
    EXPECT_TRUE(places[3].flag.Empty());
    EXPECT_EQ(places[3].region.left, 0);
    EXPECT_EQ(places[3].region.right, 15);
}

}  // namespace
}  // namespace sonavel
