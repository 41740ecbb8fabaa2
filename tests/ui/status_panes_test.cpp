// The panes of the status bar: which of them yields in a narrow window, and what is read of a text
// that has no room.
#include "app/status_panes.h"
#include "app/pane_widths.h"
#include "support/qt_test_application.h"

namespace sonavel {
namespace {

using SoundIs = PaneWishes::Sound;

struct PaneCase {
    const char* what;
    int room;
    int prompt;
    SoundIs sound;
    PaneWidths widths;
};

TEST(PaneWidthsTest, WhatMattersMostStaysWholeTheLongest) {
    constexpr PaneCase kCases[] = {
        {"room for all", 1000, 40, SoundIs::kAtRest, {250, 300, 150}},
        {"texts alone", 640, 40, SoundIs::kAtRest, {200, 300, 100}},
        {"what is left", 660, 40, SoundIs::kAtRest, {200, 300, 100}},
        {"zoom is cut", 600, 40, SoundIs::kAtRest, {200, 300, 60}},
        {"zoom goes", 560, 40, SoundIs::kAtRest, {200, 300, 0}},
        {"state is cut", 480, 40, SoundIs::kAtRest, {140, 300, 0}},
        {"state goes", 380, 40, SoundIs::kAtRest, {0, 300, 0}},
        {"place is cut", 300, 40, SoundIs::kAtRest, {0, 260, 0}},
        {"busy", 480, 40, SoundIs::kBusy, {200, 240, 0}},
        {"a note and the place", 600, 280, SoundIs::kAtRest, {0, 300, 0}},
        {"a note before the place", 600, 400, SoundIs::kAtRest, {0, 200, 0}},
        {"a long note", 600, 601, SoundIs::kAtRest, {0, 0, 0}},
        {"no room", -20, 40, SoundIs::kAtRest, {0, 0, 0}},
    };
    for (const PaneCase& c : kCases) {
        const PaneWidths widths = SharePanes({.room = c.room,
                                              .least = 50,
                                              .prompt = {c.prompt, 80},
                                              .state = {200, 250},
                                              .selection = {300, 300},
                                              .zoom = {100, 150},
                                              .sound = c.sound});
        EXPECT_EQ(widths, c.widths)
            << c.what << ": " << widths.state << ' ' << widths.selection << ' ' << widths.zoom;
    }
}

class StatusPanesTest : public ::testing::Test {
  protected:
    StatusPanesTest() {
        TestApplication();
        bar_.ShowState("(Sample Value) Left,Right : 9009, -2573", StatusPanes::StateWidth::kUsual);
        bar_.ShowSelection("00:00:02.000 - 00:00:04.200 (00:00:02.200)");
        bar_.ShowZoom("Zoom (1 : 383) 100.000%");
    }

    void Widen(int width) {
        window_.resize(width, 40);
        bar_.setGeometry(0, 0, width, 24);
        window_.show();
        QApplication::processEvents();
    }
    StatusPane& Pane(const char* name) { return *bar_.findChild<StatusPane*>(name); }
    bool IsWhole(const char* name) {
        StatusPane& pane = Pane(name);
        return pane.isVisible() && pane.toolTip().isEmpty();
    }

    QWidget window_;
    StatusPanes& bar_ = *new StatusPanes(&window_);
};

TEST_F(StatusPanesTest, TextsWithoutRoomAreReadInTheToolTip) {
    const int selection = Pane("selection").WidthFor(Pane("selection").text());
    Widen(2000);
    for (const char* name : {"state", "selection", "zoom"}) EXPECT_TRUE(IsWhole(name)) << name;
    const int state = Pane("state").WidthFor(Pane("state").text());
    Widen(selection + state + 60);
    EXPECT_TRUE(IsWhole("selection"));
    EXPECT_FALSE(IsWhole("state"));
    EXPECT_EQ(Pane("state").toolTip(), Pane("state").text());
    EXPECT_FALSE(Pane("zoom").isVisible());
    Widen(2000);
    for (const char* name : {"state", "selection", "zoom"}) EXPECT_TRUE(IsWhole(name)) << name;
}

TEST_F(StatusPanesTest, AFailureIsReadWholeBesideThePlace) {
    const QString failure("This command is not offered just now.");
    auto& prompt = *bar_.findChild<QLabel*>("prompt");
    Widen(Pane("selection").WidthFor(Pane("selection").text()) + 60 +
          prompt.fontMetrics().horizontalAdvance(failure));
    bar_.ShowNote(failure);
    QApplication::processEvents();
    EXPECT_GE(prompt.width(), prompt.fontMetrics().horizontalAdvance(failure));
    EXPECT_TRUE(IsWhole("selection"));
}

TEST_F(StatusPanesTest, PanesDoNotKeepTheWindowWide) {
    Widen(2000);
    EXPECT_LT(bar_.minimumSizeHint().width(), 100);
}

}  // namespace
}  // namespace sonavel
