// The window of a sound view: what it paints, how mouse, keys and scroll bars reach the view.
#include <QAbstractEventDispatcher>
#include <QScreen>
#include <QSignalSpy>
#include <QWheelEvent>

#include "support/paint_watch.h"
#include "support/patience.h"
#include "ui/view_fixture.h"
#include "view/draw/envelope.h"
#include "view/ui/asking_view_commands.h"
#include "view/ui/qt_values.h"

namespace sonavel {
namespace {

int WidthOf(const QRegion& region) {
    int width = 0;
    for (const QRect& rect : region) width += rect.width();
    return width;
}

class SoundViewWidgetTest : public ViewFixture {
  protected:
    // Turns the wheel over whatever lies there, as the window system does.
    void Wheel(QPoint position, int angle, Qt::KeyboardModifiers modifiers) {
        QWidget* child = widget_->childAt(position);
        QWidget* under = child ? child : widget_.get();
        QWheelEvent event(under->mapFrom(widget_.get(), position), widget_->mapToGlobal(position),
                          {}, {0, angle}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(under, &event);
    }
    void ShowRulers() {
        ProfileFile display = folder_.Display();
        for (const char* ruler : {"HORIZONTAL RULER", "VERTICAL RULER"})
            ASSERT_TRUE(display.SetInteger("__SOUND_DISPLAY_ITEMS", ruler, 1));
    }
    // Into the window's own coordinates, over no child.
    void MovePointer(QPoint position) { QTest::mouseMove(widget_.get(), position); }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(widget_.get(), Qt::LeftButton, modifiers, from);
        QTest::mouseMove(widget_.get(), (from + to) / 2);
        QTest::mouseMove(widget_.get(), to);
        QTest::mouseRelease(widget_.get(), Qt::LeftButton, modifiers, to);
    }
    // What stands on the screen, against everything painted anew.
    void ExpectScreenIsUpToDate() {
        ExpectScreenIsUpToDate(ToQRect(widget_->View().State().Geometry().waveform));
    }
    void ExpectScreenIsUpToDate(const QRect& area) {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const QImage screen = widget_->screen()
                                          ->grabWindow(widget_->winId())
                                          .toImage()
                                          .convertToFormat(QImage::Format_RGB32);
                return screen.copy(area) == Grab().copy(area);
            },
            kPatienceMs));
    }
    QScrollBar* Bar(Qt::Orientation orientation) const {
        for (QScrollBar* bar : widget_->findChildren<QScrollBar*>())
            if (bar->orientation() == orientation) return bar;
        return nullptr;
    }
};

TEST_F(SoundViewWidgetTest, PaintsEveryColumnWhereTheEnvelopeHasIt) {
    CSoundView& view = Open({2, 60000, BeatingTone, {}});
    view.State().SetSelection(20000, 40000);
    const QImage image = Grab();
    for (unsigned channel : {0u, 1u}) {
        const Rectangle lane = view.State().Geometry().Lane(channel, 2);
        int selected = 0;
        for (const EnvelopeColumn& column : EnvelopeColumns(
                 {view.Sound(), view.Extremes(), channel, lane, view.Zoom().Horizontal(),
                  view.Zoom().Vertical(), view.State().GetSelection()})) {
            const bool inSelection = column.pen == ColumnPen::kSelected;
            selected += inSelection;
            const QRgb pen =
                ToQColor(view.Settings().colours[inSelection ? ColourSlot::kSelectedWaveform
                                                             : ColourSlot::kWaveform])
                    .rgb();
            if (column.x < 2) continue;  // the cursor stands there
            ASSERT_EQ(image.pixel(column.x, column.yMax), pen) << channel << " " << column.x;
            ASSERT_EQ(image.pixel(column.x, column.yMin), pen) << channel << " " << column.x;
            ASSERT_NE(image.pixel(column.x, lane.top), pen) << channel << " " << column.x;
        }
        EXPECT_GT(selected, 150);
    }
}

TEST_F(SoundViewWidgetTest, ACursorMoveAndAScrollStepPaintOnlyTheirStrips) {
    CSoundView& view = Open({2, 200000, BeatingTone, {}});
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().ScrollHorizontallyTo(400);
    const QRect waveform = ToQRect(view.State().Geometry().waveform);

    PaintWatch cursorWatch(*widget_);
    view.State().SetCursor(static_cast<std::uint32_t>(FrameAt(200)));
    const QRegion cursor = cursorWatch.Painted() & waveform;
    EXPECT_FALSE(cursor.isEmpty());
    EXPECT_LT(WidthOf(cursor), 20);
    ExpectScreenIsUpToDate();

    PaintWatch scrollWatch(*widget_);
    view.Zoom().ScrollHorizontally(ScrollStep::kPageForward);
    const QRegion scrolled = scrollWatch.Painted() & waveform;
    EXPECT_FALSE(scrolled.isEmpty());
    EXPECT_LT(WidthOf(scrolled), 40);
    ExpectScreenIsUpToDate();

    PaintWatch selectionWatch(*widget_);
    view.State().SetSelection(static_cast<std::uint32_t>(FrameAt(300)),
                              static_cast<std::uint32_t>(FrameAt(340)));
    EXPECT_LT(WidthOf(selectionWatch.Painted() & waveform), 60);
    ExpectScreenIsUpToDate();
}

TEST_F(SoundViewWidgetTest, ShowsEveryChangeOfTheSound) {
    CSoundView& view = Open({1, 5000, BeatingTone, {}});
    std::ranges::fill(view.Sound().MutableBytes(), std::uint8_t{0});
    view.Document().NotifyChanged(0);
    ExpectScreenIsUpToDate();
    const Rectangle& waveform = view.State().Geometry().waveform;
    const QRgb pen = ToQColor(view.Settings().colours[ColourSlot::kWaveform]).rgb();
    const QImage image = Grab();
    for (int y = waveform.top; y < waveform.bottom; ++y)
        EXPECT_EQ(image.pixel(100, y) == pen, y == waveform.top + waveform.Height() / 2) << y;
}

TEST_F(SoundViewWidgetTest, ThePlayLineInvertsItsColumn) {
    SetOption("__SOUND_GENERAL_OPTIONS", "DISPLAY SEEKER", 1);
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    view.State().SetSelection(20000, 40000);
    const QImage still = Grab();
    ASSERT_TRUE(view.Sound().Play(0));
    ASSERT_TRUE(view.Sound().Pause());
    const QRect waveform = ToQRect(view.State().Geometry().waveform);
    for (const std::uint32_t frame : {10000u, 30000u}) {
        view.Playing().OnPlayPosition(2 * frame, 2 * 64000);
        ExpectScreenIsUpToDate();
        const QImage image = Grab();
        const auto x = static_cast<int>(view.Zoom().Pixels().X(frame));
        for (int y = waveform.top(); y <= waveform.bottom(); ++y) {
            ASSERT_EQ(image.pixel(x, y), still.pixel(x, y) ^ 0x00FFFFFF) << frame << " row " << y;
            ASSERT_EQ(image.pixel(x + 1, y), still.pixel(x + 1, y));
        }
    }
}

TEST_F(SoundViewWidgetTest, AStatusFormatIsShownOnTheRulerAtOnce) {
    ShowRulers();
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    const QRect ruler = ToQRect(view.State().Geometry().horizontalRuler);
    std::vector<QImage> shown;
    for (const auto format : {StatusFormat::kSample, StatusFormat::kTime, StatusFormat::kSecond}) {
        ASSERT_TRUE(view.SetStatusFormat(format));
        ExpectScreenIsUpToDate(ruler);
        shown.push_back(Grab().copy(ruler));
    }
    EXPECT_NE(shown[0], shown[1]);
    EXPECT_NE(shown[1], shown[2]);
}

TEST_F(SoundViewWidgetTest, ADragSelectsAndAClickSetsTheCursor) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    QSignalSpy changes(widget_.get(), &SoundViewWidget::SelectionChanged);
    Drag(Waveform(100, 50), Waveform(300, 60));
    EXPECT_EQ(view.State().GetSelection(), (Selection{static_cast<std::uint32_t>(FrameAt(100)),
                                                      static_cast<std::uint32_t>(FrameAt(300))}));
    EXPECT_GE(changes.count(), 1);

    QTest::mouseMove(widget_.get(), Waveform(301, 20));
    EXPECT_EQ(widget_->cursor().shape(), Qt::SplitHCursor);
    Drag(Waveform(301, 20), Waveform(401, 20));
    EXPECT_EQ(view.State().GetSelection().start, FrameAt(100));
    EXPECT_NEAR(view.State().GetSelection().end, FrameAt(400), FrameAt(2));

    Drag(Waveform(450, 20), Waveform(450, 20), Qt::ShiftModifier);
    EXPECT_EQ(view.State().GetSelection().end, FrameAt(450));

    QTest::mouseClick(widget_.get(), Qt::LeftButton, {}, Waveform(500, 20));
    EXPECT_FALSE(view.State().HasSelection());
    EXPECT_EQ(view.State().Cursor(), FrameAt(500));
    QTest::mouseMove(widget_.get(), Waveform(200, 20));
    EXPECT_EQ(widget_->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(SoundViewWidgetTest, ADragPastTheEdgeScrollsOn) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().Time(TimeZoomIn);
    QTest::mousePress(widget_.get(), Qt::LeftButton, {}, Waveform(300, 20));
    const auto anchor = static_cast<std::uint32_t>(FrameAt(300));
    QTest::mouseMove(widget_.get(), Waveform(view.State().WaveformWidth() + 15, 20));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return view.Zoom().Horizontal().position >= 60; }, kPatienceMs));
    QTest::mouseRelease(widget_.get(), Qt::LeftButton, {},
                        Waveform(view.State().WaveformWidth() + 15, 20));
    EXPECT_EQ(view.State().GetSelection().start, anchor);
    EXPECT_GE(view.State().GetSelection().end, FrameAt(view.State().WaveformWidth() - 1));
    EXPECT_TRUE(QAbstractEventDispatcher::instance()->registeredTimers(widget_.get()).isEmpty())
        << "it scrolls on";
}

TEST_F(SoundViewWidgetTest, TheWheelZoomsAroundThePointer) {
    CSoundView& view = Open({1, 1000000, BeatingTone, {}});
    const QPoint pointer = Waveform(400, 100);
    const std::int64_t frame = FrameAt(400);
    for (int notch = 0; notch < 4; ++notch) {
        Wheel(pointer, 120, Qt::ControlModifier);
        EXPECT_NEAR(static_cast<double>(FrameAt(400)), static_cast<double>(frame),
                    static_cast<double>(2 * view.Zoom().TimeRatio() + 2));
    }
    EXPECT_EQ(view.Zoom().Horizontal().maximum, 16 * view.State().WaveformWidth());
    const std::int64_t position = view.Zoom().Horizontal().position;
    Wheel(pointer, -120, {});
    EXPECT_GT(view.Zoom().Horizontal().position, position);
    Wheel(pointer, 120, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(IsLevelZoomed(view.Zoom().State()));
}

TEST_F(SoundViewWidgetTest, TheWheelOverTheLevelRulerZoomsLevelsUnderTheBarToo) {
    ShowRulers();
    CSoundView& view = Open({1, 1000000, BeatingTone, {}});
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().ScrollHorizontallyTo(300);
    const ScrollState time = view.Zoom().Horizontal();
    const Rectangle& ruler = view.State().Geometry().verticalRuler;
    const int height = view.State().WaveformHeight();
    const QPoint left(ruler.left + 2, ruler.top + 50);
    const QPoint edge(ruler.right - 2, ruler.top + 60);
    Wheel(left, 120, {});
    EXPECT_EQ(view.Zoom().Vertical().maximum, height * 3 / 2);
    Wheel(left, 120, {});
    EXPECT_EQ(view.Zoom().Vertical().maximum, height * 3 / 2 * 3 / 2);
    MovePointer(edge);
    ASSERT_EQ(widget_->childAt(edge), Bar(Qt::Vertical));
    Wheel(edge, -120, {});
    EXPECT_NEAR(static_cast<double>(view.Zoom().Vertical().maximum), height * 1.5, 1);
    // As far down as the bar reaches.
    Wheel({edge.x(), view.State().Geometry().horizontalRuler.top}, -120, {});
    EXPECT_EQ(view.Zoom().Vertical().maximum, height);
    EXPECT_FALSE(Bar(Qt::Vertical)->isVisible());
    EXPECT_EQ(view.Zoom().Horizontal(), time);
}

TEST_F(SoundViewWidgetTest, TheWheelOverTheScrollBarBelowWorksWhereItStands) {
    CSoundView& view = Open({1, 1000000, BeatingTone, {}});
    const QPoint pointer(400, ToQRect(view.State().Geometry().horizontalScrollBar).center().y());
    ASSERT_EQ(widget_->childAt(pointer), Bar(Qt::Horizontal));
    const std::int64_t frame = FrameAt(400);
    for (int notch = 0; notch < 4; ++notch) Wheel(pointer, 120, Qt::ControlModifier);
    EXPECT_EQ(view.Zoom().Horizontal().maximum, 16 * view.State().WaveformWidth());
    EXPECT_NEAR(static_cast<double>(FrameAt(400)), static_cast<double>(frame),
                static_cast<double>(2 * view.Zoom().TimeRatio()));
}

TEST_F(SoundViewWidgetTest, TheLevelBarShowsOnlyWhileItIsWanted) {
    ShowRulers();
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    QScrollBar* const bar = Bar(Qt::Vertical);
    const Rectangle& ruler = view.State().Geometry().verticalRuler;
    const auto at = [&](int fromRight) { return QPoint(ruler.right - fromRight, 100); };
    MovePointer(at(2));
    EXPECT_FALSE(bar->isVisible()) << "there is nothing to scroll";
    view.Zoom().Level(LevelZoomIn);
    EXPECT_TRUE(bar->isVisible()) << "the pointer waits for it";
    ZoomDefault(view);
    QWidget* const zoomer =
        widget_->childAt(ToQRect(view.State().Geometry().zoomerButton).center());
    QEnterEvent enter({2, 2}, {2, 2}, {2, 2});
    QApplication::sendEvent(zoomer, &enter);
    view.Zoom().Level(LevelZoomIn);
    EXPECT_FALSE(bar->isVisible()) << "the pointer went on to a button";
    MovePointer(at(3));
    EXPECT_TRUE(bar->isVisible());
    // Away over the ruler, and back.
    for (const auto& [fromRight, shown] :
         {std::pair{18, false}, {10, false}, {4, true}, {18, false}, {1, true}}) {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(bar, &leave);
        MovePointer(at(fromRight));
        EXPECT_EQ(bar->isVisible(), shown) << fromRight;
    }
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(widget_.get(), &leave);
    EXPECT_FALSE(bar->isVisible());

    // A drag over the ruler that began in the waveform does not call it.
    QTest::mousePress(widget_.get(), Qt::LeftButton, {}, Waveform(300, 20));
    MovePointer(at(2));
    EXPECT_FALSE(bar->isVisible());
    QTest::mouseRelease(widget_.get(), Qt::LeftButton, {}, Waveform(320, 20));

    // Held, it stays wherever the pointer is; let go over the ruler, it goes.
    MovePointer(at(2));
    ASSERT_TRUE(bar->isVisible());
    const QPoint thumb(bar->width() / 2, bar->height() / 2);
    QTest::mousePress(bar, Qt::LeftButton, {}, thumb);
    QTest::mouseMove(bar, thumb - QPoint(100, 20));
    QApplication::sendEvent(bar, &leave);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_LT(view.Zoom().Vertical().position, 67);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, thumb - QPoint(100, 20));
    EXPECT_FALSE(bar->isVisible());

    // The keyboard shows it for a moment.
    MovePointer(Waveform(300, 50));
    QTest::keyClick(widget_.get(), Qt::Key_Right);
    EXPECT_FALSE(bar->isVisible());
    QTest::keyClick(widget_.get(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar->isVisible(); }, kPatienceMs));
}

TEST_F(SoundViewWidgetTest, ScrollBarsAndViewStayInStep) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    QScrollBar* const bar = Bar(Qt::Horizontal);
    EXPECT_FALSE(Bar(Qt::Vertical)->isVisible());
    EXPECT_EQ(bar->maximum(), 0);
    view.Zoom().Time(TimeZoomIn);
    view.Zoom().Time(TimeZoomIn);
    EXPECT_EQ(bar->maximum(), view.Zoom().Horizontal().LastPosition());
    EXPECT_EQ(bar->pageStep(), view.Zoom().Horizontal().page);

    struct Step {
        QAbstractSlider::SliderAction action;
        std::int64_t expected;
    };
    view.Zoom().ScrollHorizontallyTo(100);
    EXPECT_EQ(bar->value(), 100);
    for (const Step& step :
         {Step{QAbstractSlider::SliderSingleStepAdd, 101},
          Step{QAbstractSlider::SliderPageStepAdd, 111},
          Step{QAbstractSlider::SliderSingleStepSub, 110},
          Step{QAbstractSlider::SliderPageStepSub, 100},
          Step{QAbstractSlider::SliderToMaximum, view.Zoom().Horizontal().LastPosition()},
          Step{QAbstractSlider::SliderToMinimum, 0}}) {
        bar->triggerAction(step.action);
        EXPECT_EQ(view.Zoom().Horizontal().position, step.expected) << step.action;
        EXPECT_EQ(bar->value(), step.expected) << step.action;
    }
    bar->setValue(250);
    EXPECT_EQ(view.Zoom().Horizontal().position, 250);

    view.Zoom().Level(LevelZoomIn);
    EXPECT_EQ(Bar(Qt::Vertical)->value(), view.Zoom().Vertical().position);
    Bar(Qt::Vertical)->setValue(3);
    EXPECT_EQ(view.Zoom().Vertical().position, 3);
}

TEST_F(SoundViewWidgetTest, TheZoomButtonsTakeEitherButton) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    const auto press = [&](const Rectangle& area, Qt::MouseButton button) {
        QWidget* child = widget_->childAt(ToQRect(area).center());
        ASSERT_NE(child, nullptr);
        QTest::mouseClick(child, button);
    };
    const std::int64_t width = view.Zoom().Horizontal().maximum;
    press(view.State().Geometry().timeZoomButton, Qt::LeftButton);
    EXPECT_EQ(view.Zoom().Horizontal().maximum, 2 * width);
    press(view.State().Geometry().timeZoomButton, Qt::RightButton);
    EXPECT_EQ(view.Zoom().Horizontal().maximum, width);
    press(view.State().Geometry().levelZoomButton, Qt::LeftButton);
    EXPECT_TRUE(IsLevelZoomed(view.Zoom().State()));
    press(view.State().Geometry().levelZoomButton, Qt::RightButton);
    EXPECT_FALSE(IsLevelZoomed(view.Zoom().State()));
    int run = 0;
    QObject::connect(actions_.get(), &CommandActions::CommandRun,
                     [&run](int id, const Outcome&) { run = id; });
    press(view.State().Geometry().zoomerButton, Qt::LeftButton);
    EXPECT_EQ(run, view_command::kZoomUser);
}

TEST_F(SoundViewWidgetTest, EveryCommandThatAsksShowsItsDialogAndRunsWithTheAnswer) {
    CSoundView& view = Open({1, 6400, BeatingTone, {}});
    AskingViewCommands commands(view, nullptr);
    view.State().SetSelection(0, 100);
    ASSERT_TRUE(commands.RunCommand(view_command::kCopy));
    ASSERT_TRUE(commands.RunCommand(view_command::kDropMarker));
    const auto whenOpen = [](int result) {
        QTimer::singleShot(0, [result] {
            qobject_cast<QDialog*>(QApplication::activeModalWidget())->done(result);
        });
    };
    int asking = 0;
    for (const Command<CSoundView>& row : ViewCommands()) {
        if (row.run) continue;
        SCOPED_TRACE(row.info.menuText);
        ++asking;
        whenOpen(QDialog::Rejected);
        const bool shows = row.info.id == view_command::kClipboardContents;
        EXPECT_EQ(commands.RunCommand(row.info.id), shows ? Done() : Cancelled());
        whenOpen(QDialog::Accepted);
        EXPECT_TRUE(commands.RunCommand(row.info.id));
    }
    EXPECT_EQ(asking, 13);
    EXPECT_EQ(view.FrameCount(), 6500u + 44100)
        << "the clip once, at the cursor gone to, and a second of silence";
}

TEST_F(SoundViewWidgetTest, PlainKeysRunTheirCommands) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    QTest::keyClick(widget_.get(), Qt::Key_Up);
    EXPECT_EQ(view.Zoom().Horizontal().maximum, 2 * view.State().WaveformWidth());
    view.State().SetCursor(1000);
    QTest::keyClick(widget_.get(), Qt::Key_Right);
    EXPECT_EQ(view.State().Cursor(), 1000 + view.Zoom().Pixels().FramesIn(1));
    QTest::keyClick(widget_.get(), Qt::Key_M);
    EXPECT_EQ(view.Sound().Markers().Count(), 1u);
    QTest::keyClick(widget_.get(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(view.State().GetSelection().end, 64000u);
    QTest::keyClick(widget_.get(), Qt::Key_Space);
    EXPECT_TRUE(view.Sound().IsPlaying());
    QTest::keyClick(widget_.get(), Qt::Key_Return);
    EXPECT_TRUE(view.Sound().IsPaused());
    QTest::keyClick(widget_.get(), Qt::Key_Return);
    QTest::keyClick(widget_.get(), Qt::Key_Space);
    EXPECT_TRUE(view.Sound().IsStopped());
}

TEST_F(SoundViewWidgetTest, TheRightButtonOpensTheMenuForTheSelection) {
    CSoundView& view = Open({1, 64000, BeatingTone, {}});
    for (const bool selected : {false, true}) {
        if (selected) view.State().SetSelection(1000, 30000);
        QTest::mousePress(widget_.get(), Qt::RightButton, {}, Waveform(400, 40));
        QTest::mouseRelease(widget_.get(), Qt::RightButton, {}, Waveform(400, 40));
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->objectName(), selected ? "Sound View Selection" : "Sound View Normal");
        const QAction* cut = actions_->Action(view_command::kCut);
        EXPECT_EQ(menu->actions().contains(cut), selected);
        EXPECT_EQ(cut->isEnabled(), selected);
        const QAction* zoom = actions_->Action(view_command::kZoomSelection);
        EXPECT_TRUE(menu->actions().contains(zoom));
        EXPECT_EQ(zoom->isEnabled(), selected);
        menu->close();
        QApplication::processEvents();
    }
}

TEST_F(SoundViewWidgetTest, AFlagIsDraggedAndAPlainPointerReadsTheSamples) {
    TestSound sound{1, 64000, [](unsigned, std::uint32_t frame) { return int(frame % 100); }, {}};
    sound.markers.Add(32000, "Here", 0);
    SetOption("__SOUND_GENERAL_OPTIONS", "DISPLAY SAMPLE DATA", 1);
    CSoundView& view = Open(sound);
    const auto x = static_cast<int>(view.Zoom().Pixels().X(32000)) + 2;
    const int y = view.State().Geometry().markerStrip.top + 4;
    QTest::mouseMove(widget_.get(), {x, y});
    EXPECT_EQ(widget_->cursor().shape(), Qt::PointingHandCursor);
    Drag({x, y}, {x + 100, y});
    EXPECT_EQ(view.Sound().Markers().All()[0].position,
              32000 + static_cast<std::uint32_t>(FrameAt(x + 100) - FrameAt(x)));

    QSignalSpy texts(widget_.get(), &SoundViewWidget::StatusTextChanged);
    QTest::mouseMove(widget_.get(), Waveform(123, 20));
    ASSERT_GE(texts.count(), 1);
    EXPECT_EQ(texts.last()[0].toString(),
              QStringLiteral("(Sample Value) Left,Right : %1").arg(FrameAt(123) % 100));
}

}  // namespace
}  // namespace sonavel
