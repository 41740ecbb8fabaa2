// The main frame: titles, menus, opening, saving and closing.
#include <QAction>
#include <QDropEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTabBar>
#include <QUrl>
#include <set>

#include "app/command_ids.h"
#include "app/main_menu.h"
#include "app/save_notice.h"
#include "app_fixture.h"
#include "view/commands/view_commands.h"

namespace sonavel {
namespace {

TEST_F(AppFixture, AnEmptyFrameHasNoSoundAndOffersLittle) {
    EXPECT_EQ(Frame().windowTitle(), "Sonavel");
    EXPECT_FALSE(Frame().Area().HasAny());
    Frame().Actions().Refresh();
    for (const int id : {57602, 57603, 57604, 32844, 32771, 57635, 57650})
        EXPECT_FALSE(Frame().Actions().Action(id)->isEnabled()) << id;
    for (const int id : {57600, 57601, 57664, 32779})
        EXPECT_TRUE(Frame().Actions().Action(id)->isEnabled()) << id;
}

// The keys that two entries of a menu share, as "menu: key".
QStringList SharedAccessKeys(const QString& menu, const QList<QAction*>& actions) {
    QStringList shared;
    std::set<QString> taken;
    for (const QAction* action : actions) {
        const QString key = QKeySequence::mnemonic(action->text()).toString();
        if (!key.isEmpty() && !taken.insert(key).second) shared << menu + ": " + key;
        if (action->menu()) shared << SharedAccessKeys(action->text(), action->menu()->actions());
    }
    return shared;
}

TEST_F(AppFixture, NoTwoEntriesOfAMenuShareAnAccessKey) {
    const QStringList shared = SharedAccessKeys("menu bar", Frame().menuBar()->actions());
    EXPECT_EQ(shared.join(", ").toStdString(), "");
}

TEST_F(AppFixture, EveryCommandOfAMenuHasAnActionATextAndAPrompt) {
    App();
    std::set<int> seen;
    for (const MenuLayout& menu : MainMenuLayout()) {
        for (const MenuEntry& entry : menu.entries) {
            if (entry.kind != MenuEntry::Kind::kCommand) continue;
            EXPECT_TRUE(seen.insert(entry.commandId).second) << entry.commandId;
            const QAction* action = Frame().Actions().Action(entry.commandId);
            ASSERT_TRUE(action) << entry.commandId;
            EXPECT_FALSE(action->text().isEmpty()) << entry.commandId;
            EXPECT_FALSE(action->statusTip().isEmpty()) << entry.commandId;
        }
    }
}

TEST_F(AppFixture, NoKeyOfTheWindowStandsForTwoCommands) {
    std::map<QString, int> owners;
    for (const auto& [id, action] : (App(), Frame().Actions().All())) {
        for (const QKeySequence& key : action->shortcuts()) {
            const auto [owner, fresh] = owners.emplace(key.toString(), id);
            EXPECT_TRUE(fresh) << key.toString().toStdString() << ": " << owner->second << " and "
                               << id;
        }
    }
}

TEST_F(AppFixture, TheTitleNamesTheActiveSoundWithAStarWhileModified) {
    OpenModified("a.wav");
    QApplication::processEvents();
    EXPECT_EQ(Frame().windowTitle(), "Sonavel - a.wav[*]");
    EXPECT_TRUE(Frame().isWindowModified());
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    QApplication::processEvents();
    EXPECT_EQ(Frame().windowTitle(), "Sonavel - b.wav[*]");
    EXPECT_FALSE(Frame().isWindowModified());
    Frame().Area().activeSubWindow()->showMaximized();
    QApplication::processEvents();
    EXPECT_EQ(Frame().windowTitle(), "Sonavel - b.wav[*]");
    Run(app_command::kNextWindow);
    EXPECT_EQ(Frame().windowTitle(), "Sonavel - a.wav[*]");
    EXPECT_EQ(Active().Title(), "a.wav");
}

TEST_F(AppFixture, FilesAreOpenedMaximizedWhereTheSettingsSaySo) {
    programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "OPEN AND MAXIMIZE", 1);
    ASSERT_TRUE(Sounds().NewDocument(NewSoundChoice{}));
    QApplication::processEvents();
    EXPECT_FALSE(Frame().Area().FrameOf(*Sounds().Active())->isMaximized());
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    QApplication::processEvents();
    EXPECT_TRUE(Frame().Area().FrameOf(*Sounds().Active())->isMaximized());
}

TEST_F(AppFixture, AFileThatIsOpenComesToTheFront) {
    const QString first = WavFile("a.wav");
    ASSERT_TRUE(App().OpenFile(first));
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    ASSERT_TRUE(App().OpenFile(first));
    EXPECT_EQ(Sounds().Count(), 2u);
    EXPECT_EQ(Active().Title(), "a.wav");
    EXPECT_EQ(Frame().Area().activeSubWindow(), Frame().Area().FrameOf(*Sounds().Active()));
}

TEST_F(AppFixture, WhatCannotBeOpenedSaysSoInTheStatusBar) {
    App();
    WriteFileBytes(folder_ / "a.txt", {1, 2, 3});
    Q_EMIT Frame().FilesDropped({QString::fromStdString((folder_ / "a.txt").string())});
    EXPECT_TRUE(StatusText().startsWith("a.txt: ")) << StatusText().toStdString();
    EXPECT_GT(StatusText().size(), 8);
    EXPECT_FALSE(Frame().Area().HasAny());
    EXPECT_TRUE(Frame().Recent().Paths().isEmpty());
}

TEST_F(AppFixture, AFailingFileOfTheCommandLineGivesItsReasonWithoutABox) {
    Application app(devices_, programFolder_);
    WriteFileBytes(folder_ / "broken.aiff", {'F', 'O', 'R', 'M', 0, 0, 0, 4, 'X', 'X', 'X', 'X'});
    const QString file = QString::fromStdString((folder_ / "broken.aiff").string());
    EXPECT_EQ(app.OpenAtStart({file, WavFile("a.wav")}),
              QStringList{file + ": AIFF 'FORM' chunk does specify 'AIFF' as type"});
    EXPECT_EQ(app.Sounds().Count(), 1u);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(AppFixture, OpenedFilesAreTheRecentOnes) {
    const QString first = WavFile("a.wav");
    const QString second = WavFile("b.wav");
    EXPECT_TRUE(App().OpenFile(first));
    EXPECT_TRUE(App().OpenFile(second));
    EXPECT_EQ(Frame().Recent().Paths(), (QStringList{second, first}));
    std::filesystem::remove(first.toStdString());
    Sounds().Close(0);
    BoxAnswer answer(QMessageBox::Ok);
    EXPECT_FALSE(App().OpenFile(first));
    EXPECT_EQ(answer.Text(), "File Open Failure.");
    EXPECT_EQ(Frame().Recent().Paths(), QStringList{second});
}

TEST_F(AppFixture, DroppedFilesOpen) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(WavFile("a.wav")), QUrl::fromLocalFile(WavFile("b.wav"))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Frame(), &drop);
    EXPECT_EQ(Sounds().Count(), 0u) << "the other program must not wait for boxes";
    QApplication::processEvents();
    EXPECT_EQ(Sounds().Count(), 2u);
}

TEST_F(AppFixture, ClosingAsksOnlyForModifiedSounds) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    Run(app_command::kClose);
    EXPECT_EQ(Sounds().Count(), 0u);

    const struct {
        QMessageBox::StandardButton button;
        std::size_t left;
        bool saved;
    } cases[] = {
        {QMessageBox::Cancel, 1, false},
        {QMessageBox::Discard, 0, false},
        {QMessageBox::Save, 0, true},
    };
    for (const auto& c : cases) {
        OpenModified("b.wav");
        const FileBytes before = ReadFileBytes(folder_ / "b.wav");
        BoxAnswer answer(c.button);
        Frame().Area().FrameOf(*Sounds().Active())->close();
        EXPECT_EQ(answer.Text(), "Save changes to b.wav?");
        EXPECT_EQ(Sounds().Count(), c.left);
        EXPECT_EQ(ReadFileBytes(folder_ / "b.wav") != before, c.saved);
        while (Sounds().Count() > 0) Sounds().Close(0);
    }
}

TEST_F(AppFixture, CancelledExitClosesNothing) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    OpenModified("b.wav");
    {
        BoxAnswer answer(QMessageBox::Cancel);
        Run(app_command::kExit);
    }
    EXPECT_EQ(Sounds().Count(), 2u);
    EXPECT_TRUE(Frame().isVisible());
    BoxAnswer answer(QMessageBox::Discard);
    Run(app_command::kExit);
    EXPECT_EQ(Sounds().Count(), 0u);
    EXPECT_FALSE(Frame().isVisible());
}

TEST_F(AppFixture, SaveAllSavesWhatIsModified) {
    OpenModified("a.wav");
    OpenModified("b.wav");
    ASSERT_TRUE(App().OpenFile(WavFile("c.wav")));
    const auto untouched = std::filesystem::last_write_time(folder_ / "c.wav");
    Run(app_command::kSaveAll);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_FALSE(Sounds().At(i).document->GetModified()) << i;
    EXPECT_EQ(std::filesystem::last_write_time(folder_ / "c.wav"), untouched);
    EXPECT_FALSE(Frame().Actions().Action(app_command::kSaveAll)->isEnabled());
}

TEST_F(AppFixture, ASaveThatLosesSomethingWarnsInTheStatusBar) {
    OpenModified("a.wav");
    Active().SetSaveMarkers(false);
    Run(app_command::kSave);
    EXPECT_FALSE(StatusText().isEmpty());
    EXPECT_NE(StatusText(), "Ready");
}

TEST_F(AppFixture, ASaveThatWouldCutTheSoundAsksInTheDialogFirst) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    CWave& sound = Active().Sound();
    ASSERT_TRUE(sound.Create(1, 16, 8000, 8001));
    Active().NotifyChanged(0);
    ASSERT_TRUE(Active().SaveDocument(folder_ / "b.aiff"));
    std::filesystem::remove(folder_ / "b.aiff");
    QString warning;
    QTimer::singleShot(50, [&] {
        auto* dialog = qobject_cast<SaveAsDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        warning = dialog->findChild<QLabel*>("saveWarning")->text();
        dialog->reject();
    });
    Run(app_command::kSave);
    EXPECT_TRUE(warning.startsWith("Only the first second")) << warning.toStdString();
    EXPECT_FALSE(std::filesystem::exists(folder_ / "b.aiff"));
}

TEST_F(AppFixture, AFileThatAnotherWindowShowsCannotBeSavedOver) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    ASSERT_TRUE(App().OpenFile(WavFile("b.wav")));
    const auto notice = [&](const char* name) {
        return NoticeOfSave(Sounds(), {.path = folder_ / name, .channels = 1, .bits = 8});
    };
    EXPECT_FALSE(notice("a.wav").canSave);
    EXPECT_FALSE(notice("c.mp3").canSave);
    for (const char* name : {"b.wav", "c.wav"}) {
        EXPECT_TRUE(notice(name).canSave) << name;
        EXPECT_EQ(notice(name).text, "") << name;
    }
}

TEST_F(AppFixture, ACommandOfTheFrameThatFailsSaysWhyInTheStatusBar) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    ASSERT_TRUE(Active().StartRecording());
    Run(app_command::kRecord);
    EXPECT_EQ(StatusText(), "The sound is being recorded.");
    const auto notice = [&](unsigned channels, unsigned bits) {
        return NoticeOfSave(Sounds(),
                            {.path = folder_ / "b.wav", .channels = channels, .bits = bits});
    };
    EXPECT_TRUE(notice(1, 8).canSave);
    EXPECT_FALSE(notice(2, 8).canSave) << "so that Save As stays open";
    EXPECT_FALSE(notice(1, 16).canSave);
}

TEST_F(AppFixture, TilingFillsTheAreaAndTabsShowOneAtATime) {
    for (const char* name : {"a.wav", "b.wav", "c.wav"}) ASSERT_TRUE(App().OpenFile(WavFile(name)));
    const QSize area = Frame().Area().viewport()->size();
    for (const int command : {app_command::kTileHorizontally, app_command::kTileVertically}) {
        Run(command);
        QRegion covered;
        for (const QMdiSubWindow* window : Frame().Area().subWindowList()) {
            EXPECT_TRUE(covered.intersected(window->geometry()).isEmpty());
            covered += window->geometry();
        }
        EXPECT_EQ(covered, QRegion(QRect(QPoint(), area)));
    }
    Run(app_command::kTabs);
    EXPECT_TRUE(Frame().Actions().Action(app_command::kTabs)->isChecked());
    EXPECT_FALSE(Frame().Actions().Action(app_command::kCascade)->isEnabled());
    EXPECT_EQ(Frame().Area().findChild<QTabBar*>()->count(), 3);
    EXPECT_EQ(Frame().Area().activeSubWindow()->size(), Frame().Area().viewport()->size());
}

TEST_F(AppFixture, PanesFollowTheView) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    CSoundView& view = *Sounds().Active()->view;
    EXPECT_TRUE(view.SetStatusFormat(StatusFormat::kSecond));
    view.State().SetSelection(4000, 6000);
    QApplication::processEvents();
    const auto pane = [this](const char* name) {
        return Frame().findChild<QLabel*>(QLatin1String(name))->text();
    };
    EXPECT_TRUE(pane("selection").contains("0.500")) << pane("selection").toStdString();
    EXPECT_TRUE(pane("zoom").startsWith("Zoom (1 : "));
    view.State().SetCursor(2000);
    QApplication::processEvents();
    EXPECT_EQ(pane("readOut"), "0.250");
    Run(app_command::kClose);
    EXPECT_EQ(pane("zoom"), "");
}

TEST_F(AppFixture, WhileRecordingTheStateIsReadWholeAndTheReadOutRuns) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    Frame().resize(1000, 600);
    CSoundView& view = *Sounds().Active()->view;
    EXPECT_TRUE(view.SetStatusFormat(StatusFormat::kSecond));
    view.State().SetCursor(4000);
    QApplication::processEvents();
    auto& state = *Frame().findChild<QLabel*>("state");
    auto& readOut = *Frame().findChild<QLabel*>("readOut");
    const int usualWidth = state.width();
    Active().Sound().SetRecordBlockFrames(8000);
    ASSERT_TRUE(Active().StartRecording());
    for (int seconds = 1; seconds <= 2; ++seconds) {
        devices_.Pump();
        QApplication::processEvents();
        EXPECT_EQ(readOut.text(), QString("%1.500").arg(seconds));
    }
    EXPECT_EQ(state.text(), "(Recording)00:00:02.000 / 16000 Samples / 16000 Bytes");
    EXPECT_GE(state.contentsRect().width(), state.fontMetrics().horizontalAdvance(state.text()));
    EXPECT_GT(state.width(), usualWidth);
    EXPECT_EQ(Frame().width(), 1000);
    ASSERT_TRUE(view.Playing().EndRecording());
    QApplication::processEvents();
    EXPECT_EQ(state.width(), usualWidth);
    EXPECT_EQ(readOut.text(), "0.500");
}

TEST_F(AppFixture, ALongNoteHasTheRoomThatTextsOfPanesDoNotNeed) {
    ASSERT_TRUE(App().OpenFile(WavFile("a.wav")));
    Frame().resize(1200, 700);
    QApplication::processEvents();
    auto& state = *Frame().findChild<QLabel*>("state");
    auto& prompt = *Frame().findChild<QLabel*>("prompt");
    Frame().Status().ShowNote(QString(80, 'n'));
    for (const char* text : {"", "(Playing)"}) {
        Frame().Status().ShowState(text, StatusPanes::StateWidth::kUsual);
        QApplication::processEvents();
        EXPECT_GE(prompt.contentsRect().width() - prompt.indent(),
                  prompt.fontMetrics().horizontalAdvance(prompt.text()))
            << text;
        EXPECT_EQ(state.toolTip(), "") << text;
    }
}

TEST_F(AppFixture, HoveredCommandsShowTheirPrompts) {
    App();
    QStatusTipEvent hover("Open sound files");
    QApplication::sendEvent(&Frame(), &hover);
    EXPECT_EQ(StatusText(), "Open sound files");
    QStatusTipEvent leave{QString()};
    QApplication::sendEvent(&Frame(), &leave);
    EXPECT_EQ(StatusText(), "Ready");
}

TEST_F(AppFixture, BarsKeepTheirPlaces) {
    auto* bar = Frame().findChild<QToolBar*>("Zoom");
    ASSERT_TRUE(bar);
    bar->hide();
    Frame().addToolBar(Qt::LeftToolBarArea, Frame().findChild<QToolBar*>("Remocon"));
    Run(app_command::kStatusBar);
    Frame().close();
    app_.reset();

    EXPECT_TRUE(Frame().findChild<QToolBar*>("Zoom")->isHidden());
    EXPECT_EQ(Frame().toolBarArea(Frame().findChild<QToolBar*>("Remocon")), Qt::LeftToolBarArea);
    EXPECT_FALSE(Frame().ShowsStatusBar());
}

}  // namespace
}  // namespace sonavel
