// The spectrogram in a window, read off its image, its dialog, and the strip with the whole sound.
#include <QComboBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>

#include <vector>

#include "support/paint_watch.h"
#include "support/patience.h"
#include "ui/view_fixture.h"
#include "view/draw/frequency_ruler.h"
#include "view/ui/asking_view_commands.h"
#include "view/ui/overview_strip.h"
#include "view/ui/qt_values.h"
#include "view/ui/spectrogram_dialog.h"

namespace sonavel {
namespace {

constexpr double kHalfRate = 22050;

double TurnsOf(double frequency, std::uint32_t frame) {
    return 2 * M_PI * frequency * frame / 44100;
}

// From 2000 Hz up by 10000 Hz a second.
int RisingTone(unsigned, std::uint32_t frame) {
    return static_cast<int>(16000 * std::sin(TurnsOf(2000 + 5000 * (frame / 44100.0), frame)));
}

int CloseTones(unsigned, std::uint32_t frame) {
    return static_cast<int>(12000 *
                            (std::sin(TurnsOf(6000, frame)) + std::sin(TurnsOf(6300, frame))));
}

class SpectrogramViewTest : public ViewFixture {
  protected:
    CSoundView& OpenAs(const TestSound& sound, int command, QSize size = {640, 400}) {
        CSoundView& view = Open(sound, size);
        actions_->Run(command);
        WaitForTiles();
        return view;
    }
    // Until the window has shown all that is in sight.
    void WaitForTiles() {
        ASSERT_TRUE(QTest::qWaitFor(
            [this] {
                static_cast<void>(Grab());
                QCoreApplication::processEvents();
                return widget_->View().Pictures().Tiles().IsComplete();
            },
            kPatienceMs));
        QCoreApplication::processEvents();
    }
    Rectangle Lane(unsigned channel = 0) const {
        const CSoundView& view = widget_->View();
        return view.State().Geometry().SpectrogramLane(channel, view.Sound().GetChannels());
    }
    static int Brightness(QRgb colour) { return qRed(colour) + qGreen(colour) + qBlue(colour); }
    // The brightest row of the lane in a column of the waveform.
    int BrightestRow(const QImage& image, int x, const Rectangle& lane) const {
        int brightest = lane.top;
        for (int y = lane.top; y < lane.bottom; ++y)
            if (Brightness(image.pixel(lane.left + x, y)) >
                Brightness(image.pixel(lane.left + x, brightest)))
                brightest = y;
        return brightest;
    }
    int RowOf(double frequency) const {
        return RowOfFrequency(Lane(), widget_->View().Settings().spectrogram.look.scale, frequency,
                              kHalfRate);
    }
};

TEST_F(SpectrogramViewTest, AChirpIsALineOnTheScreen) {
    CSoundView& view = OpenAs({1, 66150, RisingTone, {}}, view_command::kShowSpectrogram);
    for (const FrequencyScale scale :
         {FrequencyScale::kLinear, FrequencyScale::kLogarithmic, FrequencyScale::kMel}) {
        view.ShowChosen(SpectrogramSettings{.look = {.windowFrames = 1024, .scale = scale}});
        WaitForTiles();
        const QImage image = Grab();
        for (int x = 20; x < 600; x += 20) {
            const double frequency = 2000 + 10000 * (static_cast<double>(FrameAt(x)) / 44100);
            EXPECT_NEAR(BrightestRow(image, x, Lane()), RowOf(frequency), 3) << x;
        }
    }
}

TEST_F(SpectrogramViewTest, CloseTonesAreTwoLines) {
    CSoundView& view =
        OpenAs({1, 44100, CloseTones, {}}, view_command::kShowSpectrogram, {400, 900});
    view.ShowChosen(SpectrogramSettings{.look = {.windowFrames = 4096}});
    WaitForTiles();
    const QImage image = Grab();
    const auto at = [&](double frequency) {
        return Brightness(image.pixel(Lane().left + 200, RowOf(frequency)));
    };
    EXPECT_GT(at(6000), at(6150) + 150);
    EXPECT_GT(at(6300), at(6150) + 150);
    // With a short window they are one.
    view.ShowChosen(SpectrogramSettings{.look = {.windowFrames = 256}});
    WaitForTiles();
    const QImage coarse = Grab();
    EXPECT_GT(Brightness(coarse.pixel(Lane().left + 200, RowOf(6150))), at(6150) + 100);
}

TEST_F(SpectrogramViewTest, ScrollingAndSelectingShowWhatAFreshPictureShows) {
    CSoundView& view = OpenAs({2, 200000, BeatingTone, {}}, view_command::kShowBoth);
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().Time(TimeZoomIn);
    WaitForTiles();
    const auto expectAsFresh = [&](const char* step) {
        WaitForTiles();
        const QImage shown = Grab();
        WaveformCanvas fresh;
        fresh.Follow(view, widget_->devicePixelRatioF());
        QImage image = shown.copy();
        QPainter painter(&image);
        const QRect area = ToQRect(view.State().Geometry().waveform);
        fresh.Draw(painter, QRect({0, 0}, area.size()), view);
        painter.end();
        // But for the column of the cursor.
        EXPECT_EQ(shown.copy(area.adjusted(2, 0, 0, 0)), image.copy(area.adjusted(2, 0, 0, 0)))
            << step;
    };
    expectAsFresh("zoomed");
    view.Zoom().ScrollHorizontallyTo(333);
    expectAsFresh("scrolled far");
    const std::uint64_t computed = view.Pictures().Tiles().Computed();
    for (int step = 0; step < 10; ++step) {
        view.Zoom().ScrollHorizontally(ScrollStep::kPageForward);
        static_cast<void>(Grab());
    }
    expectAsFresh("scrolled a little");
    EXPECT_LE(view.Pictures().Tiles().Computed(), computed + 40) << "tiles are used again";
    view.State().SetSelection(static_cast<std::uint32_t>(FrameAt(100)),
                              static_cast<std::uint32_t>(FrameAt(300)));
    expectAsFresh("selected");
    const QImage image = Grab();
    const Rectangle lane = Lane(1);
    EXPECT_GT(Brightness(image.pixel(lane.left + 200, lane.top + 5)),
              Brightness(image.pixel(lane.left + 400, lane.top + 5)) + 60);
}

TEST_F(SpectrogramViewTest, AnEditIsSeenAndTheEnvelopeGoesAndComes) {
    SetOption("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION", 1);
    CSoundView& view = OpenAs({1, 44100, BeatingTone, {}}, view_command::kShowBoth);
    const QRgb pen = ToQColor(view.Settings().colours[ColourSlot::kWaveform]).rgb();
    const auto pensIn = [&](const Rectangle& area) {
        const QImage image = Grab();
        int pens = 0;
        for (int y = area.top; y < area.bottom; ++y) pens += image.pixel(area.left + 100, y) == pen;
        return pens;
    };
    EXPECT_GT(pensIn(view.State().Geometry().envelope), 5);
    EXPECT_EQ(pensIn(view.State().Geometry().spectrogram), 0);
    const int loud = RowOf(2400 / (2 * M_PI));
    EXPECT_GT(Brightness(Grab().pixel(Lane().left + 100, loud)), 200);
    auto edit = view.Document().BeginEdit("Test");
    ASSERT_TRUE(edit);
    std::ranges::fill(view.Sound().MutableBytes(), std::uint8_t{0});
    edit->Commit(0);
    WaitForTiles();
    EXPECT_LT(Brightness(Grab().pixel(Lane().left + 100, loud)), 40);
    actions_->Run(view_command::kUndo);
    actions_->Run(view_command::kShowSpectrogram);
    EXPECT_EQ(pensIn(view.State().Geometry().waveform), 0);
    actions_->Run(view_command::kShowWaveform);
    EXPECT_GT(pensIn(view.State().Geometry().waveform), 5);
}

TEST_F(SpectrogramViewTest, NothingIsReadOfASoundThatIsBeingChanged) {
    CSoundView& view = OpenAs({1, 400000, BeatingTone, {}}, view_command::kShowSpectrogram);
    view.Zoom().Time(TimeZoomIn);
    static_cast<void>(Grab());  // the next tiles are asked for
    {
        auto edit = view.Document().BeginEdit("Test");
        ASSERT_TRUE(edit);
        const std::vector<std::uint8_t> before(view.Sound().Bytes().begin(),
                                               view.Sound().Bytes().end());
        std::ranges::fill(view.Sound().MutableBytes(), std::uint8_t{0});
        QTest::qWait(200);
        std::ranges::copy(before, view.Sound().MutableBytes().begin());
    }
    WaitForTiles();
    const QImage image = Grab();
    const int loud = RowOf(2400 / (2 * M_PI));
    for (int x = 50; x < 600; x += 50)
        EXPECT_GT(Brightness(image.pixel(Lane().left + x, loud)), 150) << x;
}

TEST_F(SpectrogramViewTest, MouseAndKeysWorkOnItAsOnTheWaveform) {
    CSoundView& view = OpenAs({2, 80000, BeatingTone, {}}, view_command::kShowSpectrogram);
    const auto place = [&](int x) { return QPoint(Lane(1).left + x, Lane(1).top + 20); };
    QTest::mousePress(widget_.get(), Qt::LeftButton, {}, place(100));
    QTest::mouseMove(widget_.get(), place(150));
    QTest::mouseMove(widget_.get(), place(200));
    QTest::mouseRelease(widget_.get(), Qt::LeftButton, {}, place(200));
    EXPECT_EQ(view.State().GetSelection().start, FrameAt(100));
    EXPECT_EQ(view.State().GetSelection().end, FrameAt(200));
    const std::int64_t zoomed = view.Zoom().Horizontal().maximum;
    QTest::keyClick(widget_.get(), Qt::Key_Up);
    EXPECT_GT(view.Zoom().Horizontal().maximum, zoomed);
    QSignalSpy texts(widget_.get(), &SoundViewWidget::StatusTextChanged);
    SetOption("__SOUND_GENERAL_OPTIONS", "DISPLAY SAMPLE DATA", 1);
    view.ReloadSettings();
    QTest::mouseMove(widget_.get(), place(260));
    ASSERT_FALSE(texts.isEmpty());
    EXPECT_TRUE(texts.back().front().toString().contains(QStringLiteral(" Hz, ")));
}

TEST_F(SpectrogramViewTest, TheDialogChangesWhatIsSeenAndTakesItBack) {
    const SpectrogramSettings initial{
        .look = {.windowFrames = 8192, .scale = FrequencyScale::kMel, .rangeDecibels = 75},
        .palette = SpectrumPalette::kIce};
    SpectrogramDialog dialog(initial);
    EXPECT_EQ(dialog.Choice(), initial);
    QSignalSpy changed(&dialog, &SpectrogramDialog::Changed);
    const auto boxes = dialog.findChildren<QComboBox*>();
    ASSERT_EQ(boxes.size(), 4);
    for (QComboBox* box : boxes) {
        EXPECT_FALSE(box->toolTip().isEmpty());
        box->setCurrentIndex(0);
    }
    dialog.findChild<QSpinBox*>()->setValue(120);
    EXPECT_EQ(changed.count(), 4) << "the shape was the first one";
    EXPECT_EQ(dialog.Choice(),
              (SpectrogramSettings{.look = {.windowFrames = 256, .rangeDecibels = 120}}));
}

TEST_F(SpectrogramViewTest, WhatTheDialogTriesIsSeenAtOnceAndGoesWithCancel) {
    CSoundView& view = OpenAs({1, 44100, BeatingTone, {}}, view_command::kShowSpectrogram);
    AskingViewCommands commands(view, nullptr);
    const SpectrogramSettings before = view.Settings().spectrogram;
    for (const int result : {QDialog::Rejected, QDialog::Accepted}) {
        SpectrogramSettings tried;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<SpectrogramDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->findChild<QSpinBox*>()->setValue(50);
            tried = view.Settings().spectrogram;
            dialog->done(result);
        });
        EXPECT_EQ(commands.RunCommand(view_command::kSpectrogramSettings).IsDone(),
                  result == QDialog::Accepted);
        EXPECT_EQ(tried.look.rangeDecibels, 50);
        EXPECT_EQ(view.Settings().spectrogram, result == QDialog::Accepted ? tried : before);
        view.ReloadSettings();
        EXPECT_EQ(view.Settings().spectrogram, result == QDialog::Accepted ? tried : before);
    }
}

// --- The overview

class OverviewStripTest : public SpectrogramViewTest {
  protected:
    OverviewStrip& ShowStrip() {
        strip_ = std::make_unique<OverviewStrip>(*widget_);
        strip_->resize(600, 40);
        strip_->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(strip_.get()));
        return *strip_;
    }
    void TearDown() override { strip_.reset(); }

    std::unique_ptr<OverviewStrip> strip_;
};

TEST_F(OverviewStripTest, TheFrameIsDraggedAndAClickGoesThere) {
    CSoundView& view = Open({1, 600000, BeatingTone, {}});
    for (int step = 0; step < 4; ++step) view.Zoom().Time(TimeZoomIn);
    OverviewStrip& strip = ShowStrip();
    EXPECT_EQ(strip.accessibleName(), QStringLiteral("Overview"));
    const auto shownMiddle = [&] { return static_cast<double>(FrameAt(320)) / 1000; };
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {300, 20});
    EXPECT_NEAR(shownMiddle(), 300, 2);
    QTest::mousePress(&strip, Qt::LeftButton, {}, {302, 20});
    EXPECT_NEAR(shownMiddle(), 300, 2) << "on the frame nothing moves yet";
    QTest::mouseMove(&strip, {402, 20});
    EXPECT_NEAR(shownMiddle(), 400, 2);
    QTest::mouseRelease(&strip, Qt::LeftButton, {}, {402, 20});
    QTest::mouseMove(&strip, {200, 20});
    EXPECT_NEAR(shownMiddle(), 400, 2);
    EXPECT_EQ(strip.focusPolicy(), Qt::NoFocus);
}

TEST_F(OverviewStripTest, ShowsTheSoundTheFrameAndEachChange) {
    CSoundView& view = Open({1,
                             600000,
                             [](unsigned channel, std::uint32_t frame) {
                                 return frame < 300000 ? BeatingTone(channel, frame) : 0;
                             },
                             {}});
    OverviewStrip& strip = ShowStrip();
    const QRgb pen = ToQColor(view.Settings().colours[ColourSlot::kWaveform]).rgb();
    const auto pensAt = [&](int x) {
        const QImage image = strip.grab().toImage();
        int pens = 0;
        for (int y = 0; y < strip.height(); ++y)
            pens += image.pixel(x * image.width() / strip.width(), y) == pen;
        return pens;
    };
    EXPECT_GT(pensAt(100), 10);
    EXPECT_LE(pensAt(400), 2);
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().ScrollHorizontallyTo(100000);
    EXPECT_EQ(pensAt(100), 0) << "dimmed beside the frame";
    view.Zoom().ScrollHorizontallyTo(0);
    EXPECT_GT(pensAt(100), 10);
    auto edit = view.Document().BeginEdit("Test");
    ASSERT_TRUE(edit);
    std::ranges::fill(view.Sound().MutableBytes(), std::uint8_t{0});
    edit->Commit(0);
    EXPECT_LE(pensAt(100), 2);
    strip.FollowView();
    EXPECT_FALSE(strip.isVisible()) << "14 seconds are no long sound";
    actions_->Run(view_command::kOverview);
    EXPECT_TRUE(strip.isVisible());
}

}  // namespace
}  // namespace sonavel
