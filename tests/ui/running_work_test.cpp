// What the window allows while a long operation runs.
#include <QDialogButtonBox>
#include <QProgressBar>

#include "app/command_ids.h"
#include "platform/qt/qt_progress.h"
#include "support/patience.h"
#include "ui/app_fixture.h"
#include "view/commands/view_commands.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {
namespace {

using namespace std::chrono_literals;

class RunningWorkTest : public AppFixture {
  protected:
    // The operation is the test itself: it changes the sound that is opened last.
    void Begin() {
        ASSERT_TRUE(App().OpenFile(WavFile("one.wav")));
        ASSERT_TRUE(App().OpenFile(WavFile("two.wav")));
        changed_ = &Active();
        Result<SoundEdit> edit = changed_->BeginEdit("Test");
        ASSERT_TRUE(edit);
        edit_ = std::make_unique<SoundEdit>(*std::move(edit));
        progress_ = Sounds().Services().progress.CreateProgress(" Flanger");
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (!Window() && std::chrono::steady_clock::now() < end) progress_->Poll();
        ASSERT_TRUE(Window());
        LetRun();
    }
    static CProgressDlg* Window() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<CProgressDlg*>(widget); window && window->isVisible())
                return window;
        return nullptr;
    }
    // What the operation does every now and then; false once it is cancelled.
    bool LetRun(std::chrono::milliseconds time = 60ms) {
        bool cancelled = false;
        const auto end = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < end) cancelled = progress_->Poll();
        return !cancelled;
    }
    void End() {
        progress_.reset();
        edit_.reset();
        QTest::qWait(100);
    }
    QString WhyNot(int command) {
        return QString::fromStdString(Frame().Actions().Offered(command).Reason());
    }
    void Trigger(int command) {
        Frame().Actions().Refresh();
        Frame().Actions().Action(command)->trigger();
        LetRun();
    }
    SoundViewWidget& WidgetOf(std::size_t index) {
        return *Frame().Area().FrameOf(Sounds().At(index))->findChild<SoundViewWidget*>();
    }

    CSoundDoc* changed_ = nullptr;
    std::unique_ptr<SoundEdit> edit_;
    std::unique_ptr<ProgressWindow> progress_;
};

TEST_F(RunningWorkTest, CommandsThatEditOpenSaveOrCloseWaitAndSayWhy) {
    Begin();
    const QString reason = "Not while \"Progress Flanger\" runs.";
    Frame().Actions().Refresh();
    for (const int command :
         {int{view_command::kCut}, int{view_command::kSelectAll}, int{view_command::kZoomTimeIn},
          int{view_command::kPlay}, int{app_command::kSave}, int{app_command::kOpen},
          int{app_command::kClose}, int{app_command::kPreferences}, int{app_command::kPalette}}) {
        EXPECT_EQ(WhyNot(command), reason) << command;
        EXPECT_FALSE(Frame().Actions().Action(command)->isEnabled()) << command;
        EXPECT_EQ(Frame().Actions().Action(command)->statusTip(), reason) << command;
    }
    const Outcome opened = App().OpenFile(WavFile("three.wav"));
    EXPECT_EQ(QString::fromStdString(opened.Reason()), reason);
    Frame().Area().FrameOf(Sounds().At(0))->close();
    LetRun();
    EXPECT_EQ(Sounds().Count(), 2u);
    End();
    Frame().Actions().Refresh();
    EXPECT_TRUE(Frame().Actions().Action(app_command::kOpen)->isEnabled());
    EXPECT_EQ(Frame().Actions().Action(app_command::kOpen)->statusTip(), "Open sound files");
}

TEST_F(RunningWorkTest, OtherSoundsAreLookedAtAndPlayedMeanwhile) {
    Begin();
    Trigger(app_command::kNextWindow);
    ASSERT_NE(&Active(), changed_);
    CSoundView& view = *Sounds().Active()->view;
    const ScrollState before = view.Zoom().Horizontal();
    Trigger(view_command::kZoomTimeIn);
    EXPECT_NE(view.Zoom().Horizontal(), before);
    Trigger(view_command::kPlay);
    EXPECT_TRUE(Active().Sound().IsPlaying());
    Trigger(view_command::kStop);
    EXPECT_FALSE(Active().Sound().IsPlaying());
    EXPECT_FALSE(WhyNot(view_command::kPaste).isEmpty());
    End();
    EXPECT_TRUE(WhyNot(view_command::kSelectAll).isEmpty());
}

TEST_F(RunningWorkTest, TheMouseReachesTheSoundsThatAreNotBeingChanged) {
    Begin();
    for (const std::size_t index : {0u, 1u}) {
        SoundViewWidget& widget = WidgetOf(index);
        const Rectangle& area = widget.View().State().Geometry().waveform;
        const std::uint32_t before = widget.View().State().Cursor();
        QTest::mouseClick(&widget, Qt::LeftButton, {},
                          {(area.left + area.right) / 2, (area.top + area.bottom) / 2});
        LetRun();
        EXPECT_EQ(widget.View().State().Cursor() != before, index == 0) << index;
    }
    End();
}

TEST_F(RunningWorkTest, ASoundThatIsBeingChangedIsPaintedAsItWas) {
    Begin();
    SoundViewWidget& widget = WidgetOf(1);
    End();
    const QImage before = widget.grab().toImage();
    Result<SoundEdit> edit = changed_->BeginEdit("Test");
    ASSERT_TRUE(edit);
    for (std::uint32_t frame = 0; frame < 8000; ++frame) changed_->Sound().SetSample(0, frame, -90);
    widget.View().OnSoundChanged(0);
    EXPECT_EQ(widget.grab().toImage(), before);
    edit->Commit(0);
    EXPECT_NE(widget.grab().toImage(), before);
}

TEST_F(RunningWorkTest, CancelEndsItAndClosingTheFrameCancelsFirst) {
    Begin();
    EXPECT_TRUE(LetRun());
    Window()->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
    EXPECT_FALSE(LetRun());
    progress_ = Sounds().Services().progress.CreateProgress(" Flanger");
    EXPECT_TRUE(LetRun());
    EXPECT_FALSE(Frame().close());
    EXPECT_FALSE(LetRun(200ms)) << "the operation hears of it";
    EXPECT_EQ(Sounds().Count(), 2u) << "and nothing closes under it";
    End();
    EXPECT_FALSE(Frame().isVisible());
    EXPECT_EQ(Sounds().Count(), 0u);
}

TEST_F(RunningWorkTest, OverAModalDialogTheWindowTakesAllInput) {
    App();
    QDialog dialog(&Frame());
    dialog.setModal(true);
    dialog.show();
    RunningWork work;
    EXPECT_EQ(CProgressDlg("x", &dialog, &work).windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(CProgressDlg("x", &Frame(), &work).windowModality(), Qt::NonModal);
    EXPECT_FALSE(work.IsRunning());
}

}  // namespace
}  // namespace sonavel
