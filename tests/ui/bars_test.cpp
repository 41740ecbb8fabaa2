// The window list, the format information, and where every bar stands after a restart.
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QProxyStyle>
#include <QToolBar>

#include "app/command_ids.h"
#include "app_fixture.h"
#include "spatial/spatializer.h"
#include "view/commands/view_commands.h"

namespace sonavel {
namespace {

class BarsTest : public AppFixture {
  protected:
    WindowListBar& List() { return *Frame().findChild<WindowListBar*>(); }
    QStringList Buttons() {
        QApplication::processEvents();
        QStringList texts;
        for (int i = 0; i < List().Buttons().count(); ++i)
            texts << List().Buttons().tabText(i) +
                         (i == List().Buttons().currentIndex() ? "!" : "");
        return texts;
    }
    QPoint PlaceOf(int button) { return List().Buttons().tabRect(button).center(); }
    void Click(int button, Qt::MouseButton with = Qt::LeftButton) {
        QTest::mouseClick(&List().Buttons(), with, {}, PlaceOf(button));
        QApplication::processEvents();
    }
    QString Format(const char* field) {
        QApplication::processEvents();
        return Frame().findChild<FormatBar*>()->findChild<QLabel*>(QLatin1String(field))->text();
    }
    QList<QWidget*> Bars() {
        QList<QWidget*> bars;
        for (auto* bar : Frame().findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly))
            bars << bar;
        for (auto* bar : Frame().findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly))
            bars << bar;
        return bars;
    }
    void Restart() {
        Frame().close();
        app_.reset();
        App();
        QApplication::processEvents();
    }
};

TEST_F(BarsTest, EachSoundHasAButtonWithAStarWhileModifiedAndTheActiveOneIsPressed) {
    App();
    EXPECT_EQ(Buttons(), QStringList());
    OpenModified("a.wav");
    ASSERT_TRUE(App().OpenFile(WavFile("b&b.wav")));
    EXPECT_EQ(Buttons(), (QStringList{"a.wav*", "b&&b.wav!"}));
    Click(0);
    EXPECT_EQ(Active().Title(), "a.wav");
    EXPECT_EQ(Frame().Area().activeSubWindow(), Frame().Area().FrameOf(*Sounds().Active()));
    Run(app_command::kSave);
    EXPECT_EQ(Buttons(), (QStringList{"a.wav!", "b&&b.wav"}));
    Frame().Area().activeSubWindow()->showMinimized();
    Click(0);
    EXPECT_FALSE(Frame().Area().activeSubWindow()->isMinimized());
}

TEST_F(BarsTest, TheMiddleButtonClosesAndAsksForAModifiedSoundThatNeedNotBeTheActiveOne) {
    OpenModified("a.wav");
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    {
        Buttons();
        BoxAnswer answer(QMessageBox::Cancel);
        Click(0, Qt::MiddleButton);
        EXPECT_EQ(answer.Text(), "Save changes to a.wav?");
        EXPECT_EQ(Buttons(), (QStringList{"a.wav*!", "b.wav"}));
    }
    Click(1, Qt::MiddleButton);
    EXPECT_EQ(Buttons(), QStringList{"a.wav*!"});
    BoxAnswer answer(QMessageBox::Discard);
    Click(0, Qt::MiddleButton);
    EXPECT_EQ(Buttons(), QStringList());
    EXPECT_EQ(Sounds().Count(), 0u);
}

// Puts a button into its place at once instead of letting it glide there.
class StillStyle : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_Widget_Animation_Duration) return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
};

TEST_F(BarsTest, ADraggedButtonStaysWhereItWasPut) {
    for (const char* name : {"a.wav", "b.wav", "c.wav"}) ASSERT_TRUE(App().OpenFile(WavFile(name)));
    Buttons();
    QTabBar& buttons = List().Buttons();
    StillStyle still;
    buttons.setStyle(&still);
    const QPoint from = PlaceOf(0);
    const QPoint to(buttons.tabRect(2).right() - 2, from.y());
    QTest::mousePress(&buttons, Qt::LeftButton, {}, from);
    for (int step = 1; step <= 10; ++step)
        QTest::mouseMove(&buttons, from + (to - from) * step / 10);
    QTest::mouseRelease(&buttons, Qt::LeftButton, {}, to);
    EXPECT_EQ(Buttons(), (QStringList{"b.wav", "c.wav", "a.wav!"}));
    ASSERT_TRUE(App().OpenFile(WavFile("d.wav")));
    Click(1);
    EXPECT_EQ(Buttons(), (QStringList{"b.wav", "c.wav!", "a.wav", "d.wav"}));
    EXPECT_EQ(Active().Title(), "c.wav");
    buttons.setStyle(nullptr);
}

TEST_F(BarsTest, ManyButtonsShareTheRowAndKeepTheEndsOfTheirNames) {
    for (int i = 0; i < 40; ++i)
        ASSERT_TRUE(
            App().OpenFile(WavFile("a rather long name of a sound " + std::to_string(i) + ".wav")));
    Buttons();
    EXPECT_LE(List().width(), Frame().width());
    QTabBar& buttons = List().Buttons();
    EXPECT_GE(buttons.tabRect(39).width(), 60);
    EXPECT_TRUE(buttons.rect().contains(buttons.tabRect(39))) << "the active one is in sight";
    EXPECT_EQ(buttons.elideMode(), Qt::ElideMiddle);
}

TEST_F(BarsTest, CloseOthersAsksFirstAndKeepsTheActiveOne) {
    OpenModified("a.wav");
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    ASSERT_TRUE(App().OpenFile(WavFile("c.wav")));
    Buttons();
    Click(1);
    {
        BoxAnswer answer(QMessageBox::Cancel);
        Run(app_command::kCloseOthers);
        EXPECT_EQ(Sounds().Count(), 3u);
    }
    Click(1);
    BoxAnswer answer(QMessageBox::Discard);
    Run(app_command::kCloseOthers);
    EXPECT_EQ(Buttons(), QStringList{"b.wav!"});
    EXPECT_FALSE(Frame().Actions().Action(app_command::kCloseOthers)->isEnabled());
    EXPECT_TRUE(Frame().Actions().Action(app_command::kSave)->isEnabled());
    EXPECT_TRUE(Frame().Actions().Action(view_command::kSelectAll)->isEnabled());
}

TEST_F(BarsTest, TheMenuOfAButtonIsThatOfItsSound) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    Buttons();
    bool closed = false;
    QTimer::singleShot(0, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        EXPECT_EQ(Active().Title(), "a.wav");
        closed = menu->actions().contains(Frame().Actions().Action(app_command::kClose));
        menu->close();
    });
    const QPoint place = PlaceOf(0);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, List().Buttons().mapToGlobal(place));
    QApplication::sendEvent(&List().Buttons(), &event);
    EXPECT_TRUE(closed);
}

TEST_F(BarsTest, TheFormatFollowsActivationEditsAndUndo) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    EXPECT_EQ(Format("history"), "Undo: off");
    Sounds().Close(0);
    programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION", 1);
    EXPECT_EQ(Format("rate") + Format("size") + Format("history"), "");
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    EXPECT_TRUE(Sounds().Active()->view->SetStatusFormat(StatusFormat::kTime));
    Active().NotifyChanged(0);
    EXPECT_EQ(Format("rate"), "8,000 Hz");
    EXPECT_EQ(Format("bits"), "8-bit");
    EXPECT_EQ(Format("channels"), "Mono");
    EXPECT_EQ(Format("length"), "00:00:01.000");
    EXPECT_EQ(Format("size"), "7.8 KB");
    EXPECT_EQ(Format("history"), "Undo: 0 bytes");
    Sounds().Active()->view->State().SetSelection(0, 4000);
    Run(view_command::kDelete);
    EXPECT_EQ(Format("length"), "00:00:00.500");
    EXPECT_EQ(Format("history"), "Undo: 3.9 KB");
    Run(view_command::kUndo);
    EXPECT_EQ(Format("length"), "00:00:01.000");
    EXPECT_EQ(Format("history"), "Undo: 0 bytes") << "what was deleted lies in the sound again";
    ASSERT_TRUE(Sounds().NewDocument({44100, 2, 16}));
    EXPECT_EQ(Format("rate") + Format("bits") + Format("channels"), "44,100 Hz16-bitStereo");
    while (Sounds().Count() > 0) Sounds().Close(0);
    EXPECT_EQ(Format("rate") + Format("size") + Format("history"), "");
}

TEST_F(BarsTest, TheMetersReferenceIsThatOfTheActiveSoundWhateverChangesIt) {
    programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION", 1);
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    const auto reference = [this] {
        return Frame().findChild<MeterPanel*>()->Left().Level().reference;
    };
    EXPECT_EQ(reference(), 128);
    Result<SoundEdit> edit = Active().BeginEdit("Copy Sample");
    ASSERT_TRUE(edit && Active().Sound().ConvertBits(16));
    edit->Commit(0);
    EXPECT_EQ(reference(), 32768);
    Run(view_command::kUndo);
    EXPECT_EQ(reference(), 128);
    Run(view_command::kRedo);
    EXPECT_EQ(reference(), 32768);
    Run(view_command::kUndo);
    ASSERT_TRUE(SpatializePositional({Active(), 0, 0, "", SpatialOutcome::kApply}, {1, 0, 0}));
    EXPECT_EQ(reference(), 32768);

    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    EXPECT_EQ(reference(), 128);
    // What happens to another sound than the active one does not matter.
    Sounds().At(0).document->NotifyChanged(0);
    EXPECT_EQ(reference(), 128);
    Run(app_command::kNextWindow);
    EXPECT_EQ(reference(), 32768);
}

TEST_F(BarsTest, TheZoomBarShowsTheRatio) {
    const auto ratio = [this] {
        QApplication::processEvents();
        return Frame().findChild<QToolBar*>("Zoom")->findChild<QLabel*>("ratio")->text();
    };
    EXPECT_EQ(ratio(), "");
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    const CSoundView& view = *Sounds().Active()->view;
    EXPECT_EQ(ratio(), QStringLiteral("1 : %1").arg(8000 / view.Zoom().Horizontal().maximum));
    Run(view_command::kZoomTimeFull);
    EXPECT_EQ(ratio(), "1 : 1");
    Run(app_command::kClose);
    EXPECT_EQ(ratio(), "");
}

TEST_F(BarsTest, EveryBarIsInTheViewMenuAndIsFoundAgainHiddenMovedOrAsItWas) {
    App();
    const auto names = [this] {
        QStringList all;
        for (const QWidget* bar : Bars()) all << bar->objectName();
        all.sort();
        return all;
    };
    EXPECT_EQ(names(), (QStringList{"3DEffects", "FileandEdit", "FormatInformation", "PlayMeter",
                                    "Remocon", "WindowList", "Zoom"}));
    for (const QString& name : names()) {
        const auto bar = [&] { return Frame().findChild<QWidget*>(name); };
        auto* toolBar = qobject_cast<QToolBar*>(bar());
        QAction* toggle = toolBar ? toolBar->toggleViewAction()
                                  : qobject_cast<QDockWidget*>(bar())->toggleViewAction();
        EXPECT_TRUE(Frame().findChild<QMenu*>("View")->actions().contains(toggle))
            << name.toStdString();
        if (toolBar) {
            EXPECT_TRUE(toolBar->isMovable() && toolBar->isFloatable()) << name.toStdString();
            Frame().addToolBar(Qt::LeftToolBarArea, toolBar);
        } else {
            Frame().addDockWidget(Qt::BottomDockWidgetArea, qobject_cast<QDockWidget*>(bar()));
        }
        toggle->trigger();
        Restart();
        EXPECT_TRUE(bar()->isHidden()) << name.toStdString();
        bar()->show();
        if (auto* moved = qobject_cast<QToolBar*>(bar()))
            EXPECT_EQ(Frame().toolBarArea(moved), Qt::LeftToolBarArea) << name.toStdString();
        else
            EXPECT_EQ(Frame().dockWidgetArea(qobject_cast<QDockWidget*>(bar())),
                      Qt::BottomDockWidgetArea);
        Restart();
        EXPECT_TRUE(bar()->isVisible()) << name.toStdString();
    }
}

}  // namespace
}  // namespace sonavel
