// The play meter bar: what it paints, what of it it repaints, and what its commands keep.
#include <gtest/gtest.h>

#include "meter/ui/play_meter_bar.h"
#include "support/paint_watch.h"
#include "support/qt_test_application.h"
#include "support/sound_files.h"

namespace sonavel {
namespace {

class MeterBarTest : public ::testing::Test {
  protected:
    MeterBarTest() {
        TestApplication();
        options_.SetInteger("__SOUND_PLAY_METER", "PLAYING METER TYPE", 1);
    }

    PlayMeterBar& Bar() {
        if (!bar_) {
            bar_ = std::make_unique<PlayMeterBar>(options_);
            bar_->setFloating(true);
            bar_->show();
        }
        return *bar_;
    }
    // A bar whose contents have that size.
    MeterPanel& Panel(int width, int height) {
        auto* panel = Bar().findChild<MeterPanel*>();
        Bar().resize(700, 700);
        QApplication::processEvents();
        panel->resize(width, height);
        QApplication::processEvents();
        return *panel;
    }
    QColor Pixel(PlayMeter& meter, int x, int y) { return meter.grab().toImage().pixelColor(x, y); }

    TemporaryFolder files_;
    ProfileFile options_{files_ / "Options.ini"};
    std::unique_ptr<PlayMeterBar> bar_;
};

TEST_F(MeterBarTest, ABarIsFilledFromTheEmptyEndInItsDirection) {
    MeterPanel& flat = Panel(610, 60);
    Bar().OnPeaks(16384, 0);  // -6 dB: 90 % of the scale
    EXPECT_EQ(flat.Left().size(), QSize(602, 24));
    EXPECT_NE(Pixel(flat.Left(), 530, 12), QColor(Qt::black));
    EXPECT_EQ(Pixel(flat.Left(), 550, 12), QColor(Qt::black));
    EXPECT_EQ(Pixel(flat.Right(), 5, 12), QColor(Qt::black));

    MeterPanel& tall = Panel(60, 610);
    EXPECT_EQ(tall.Left().size(), QSize(24, 602));
    EXPECT_NE(Pixel(tall.Left(), 12, 600), QColor(Qt::black));
    EXPECT_NE(Pixel(tall.Left(), 12, 70), QColor(Qt::black));
    EXPECT_EQ(Pixel(tall.Left(), 12, 50), QColor(Qt::black));
}

TEST_F(MeterBarTest, TheReferenceIsHalfTheFullScale) {
    MeterPanel& panel = Panel(610, 60);
    Bar().SetReference(256);
    Bar().OnPeaks(64, 64);
    EXPECT_EQ(panel.Left().Level(), (MeterLevel{64, 128}));
    Bar().SetReference(65536);
    EXPECT_EQ(panel.Right().Level(), (MeterLevel{64, 32768}));
}

TEST_F(MeterBarTest, OnlyTheBandThatChangedIsPainted) {
    MeterPanel& panel = Panel(610, 60);
    Bar().OnPeaks(16384, 16384);
    PaintWatch left(panel.Left());
    PaintWatch right(panel.Right());
    Bar().OnPeaks(8192, 16384);  // -12 dB: from 540 to 480 of 600 pixels
    EXPECT_EQ(left.Painted().boundingRect(), QRect(481, 1, 60, 22));
    EXPECT_FALSE(right.Any());
    Bar().OnPeaks(8192, 100);
    EXPECT_FALSE(right.Painted().isEmpty());
    EXPECT_FALSE(left.Any());
}

TEST_F(MeterBarTest, ColoursComeFromTheView) {
    MeterPanel& panel = Panel(610, 60);
    ColourTable colours;
    colours.Set(1, {10, 20, 30});
    colours.Set(2, {200, 0, 200});
    Bar().SetColours(colours);
    EXPECT_EQ(Pixel(panel.Left(), 400, 12), QColor(10, 20, 30));
    Bar().SwitchLabels();
    const int width = panel.Left().width() - 2;
    EXPECT_EQ(Pixel(panel.Left(), 1 + width * 9 / 10, 3), QColor(200, 0, 200));
}

TEST_F(MeterBarTest, CommandsChangeCheckAndKeepTheSettings) {
    using namespace meter_command;
    const struct {
        int id;
        const char* text;
        int stored;
        MeterScale readBack;
    } cases[] = {
        {kThirtyDb, "-&30 dB to 0 dB", 0, MeterScale::kThirtyDb},
        {kNinetyDb, "-&90 dB to 0 dB", 2, MeterScale::kNinetyDb},
        {kAbsolute, "&Absolute Gain", 3, MeterScale::kSixtyDb},
        {kSixtyDb, "-&60 dB to 0 dB", 1, MeterScale::kSixtyDb},
    };
    CommandTarget& commands = Bar().Commands();
    for (const auto& c : cases) {
        EXPECT_EQ(commands.MenuTextOfCommand(c.id), c.text);
        EXPECT_FALSE(commands.StateOfCommand(c.id).checked) << c.text;
        ASSERT_TRUE(commands.RunCommand(c.id));
        EXPECT_TRUE(commands.StateOfCommand(c.id).checked) << c.text;
        EXPECT_EQ(StoredNumber(options_.Read(), SettingId::kMeterScale), c.stored);
        EXPECT_EQ(PlayMeterBar(options_).Scale(), c.readBack) << c.text;
    }
    EXPECT_FALSE(commands.StateOfCommand(kShowLevel).checked);
    ASSERT_TRUE(commands.RunCommand(kShowLevel));
    EXPECT_TRUE(commands.StateOfCommand(kShowLevel).checked);
    EXPECT_TRUE(PlayMeterBar(options_).ShowsLabels());
}

TEST_F(MeterBarTest, SettingsReadAnewKeepTheAbsoluteScaleUnlessAnotherWasWritten) {
    Bar().SetScale(MeterScale::kAbsolute);
    Bar().ReloadSettings();
    EXPECT_EQ(Bar().Scale(), MeterScale::kAbsolute);
    WriteNumber(options_, SettingId::kMeterScale, static_cast<int>(MeterScale::kNinetyDb));
    WriteNumber(options_, SettingId::kMeterLabels, 1);
    Bar().ReloadSettings();
    EXPECT_EQ(Bar().Scale(), MeterScale::kNinetyDb);
    EXPECT_TRUE(Bar().ShowsLabels());
}

}  // namespace
}  // namespace sonavel
