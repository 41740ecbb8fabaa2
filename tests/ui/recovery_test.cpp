// What the editor keeps of unsaved work when it is made to end, and what it offers at the next
// start.
#include <csignal>

#include "app/command_ids.h"
#include "app/recovery/left_work_dialog.h"
#include "app/recovery/left_work_offer.h"
#include "document/edit_operations.h"
#include "ui/app_fixture.h"

namespace sonavel {
namespace {

// Answers the dialog that comes up next, and notes what it showed.
class LeftWorkAnswer {
  public:
    explicit LeftWorkAnswer(LeftWorkChoice choice) {
        timer_.callOnTimeout([this, choice] {
            auto* dialog = qobject_cast<LeftWorkDialog*>(QApplication::activeModalWidget());
            if (!dialog) return;
            timer_.stop();
            for (QComboBox* box : dialog->findChildren<QComboBox*>())
                box->setCurrentIndex(static_cast<int>(choice));
            const auto* list = dialog->findChild<QTreeWidget*>(QStringLiteral("leftWork"));
            for (int column = 1; column < 5; ++column)
                shown_ << list->topLevelItem(0)->text(column);
            hasPicture_ = !list->topLevelItem(0)->icon(0).isNull();
            dialog->accept();
        });
        timer_.start(5);
    }
    const QStringList& Shown() const { return shown_; }
    bool HasPicture() const { return hasPicture_; }

  private:
    QTimer timer_;
    QStringList shown_;
    bool hasPicture_ = false;
};

class RecoveryUiTest : public AppFixture {
  protected:
    RecoveryUiTest() {
        programFolder_.Options().SetInteger("__SOUND_GENERAL_OPTIONS", "SAVE UNDO REDO INFOMATION",
                                            1);
    }

    void Start() {
        app_ = std::make_unique<Application>(devices_, programFolder_, Records());
        app_->Show();
        for (int i = 0; i < 20; ++i) QTest::qWait(5);
    }
    std::filesystem::path Records() const { return folder_ / "records"; }
    std::size_t LeftCount() const { return recovery::ListLeftWork(Records()).size(); }
    // Ends the program the hard way with one edit unsaved.
    void LeaveWork() {
        Start();
        ASSERT_TRUE(app_->OpenFile(WavFile("talk.wav")));
        ASSERT_TRUE(edit::Delete(Active(), {100, 300, 100}));
        QTimer::singleShot(0, &Frame(), [this] { app_->LeaveAtOnce(); });
        EXPECT_EQ(QApplication::exec(), 0);
        app_.reset();
        ASSERT_EQ(LeftCount(), 1u);
    }
};

TEST_F(RecoveryUiTest, OffersWhatWasLeftAndRecoversItWithItsHistory) {
    LeaveWork();
    LeftWorkAnswer answer(LeftWorkChoice::kRecover);
    Start();
    ASSERT_EQ(answer.Shown().size(), 4);
    EXPECT_EQ(answer.Shown()[0], "talk.wav");
    EXPECT_EQ(answer.Shown()[3], "1");
    EXPECT_TRUE(answer.HasPicture());
    ASSERT_EQ(Sounds().Count(), 1u);
    EXPECT_TRUE(Active().GetModified());
    EXPECT_EQ(Active().Title(), "talk.wav");
    EXPECT_EQ(Active().Sound().GetFrameCount(), 7800u);
    EXPECT_TRUE(Active().Undo());
    EXPECT_EQ(Active().Sound().GetFrameCount(), 8000u);
    Sounds().Close(0);
    app_.reset();
    EXPECT_EQ(LeftCount(), 0u);
}

TEST_F(RecoveryUiTest, LeavesForLaterAndDiscardsAsChosen) {
    LeaveWork();
    {
        LeftWorkAnswer later(LeftWorkChoice::kLater);
        Start();
        EXPECT_EQ(Sounds().Count(), 0u);
        app_.reset();
        EXPECT_EQ(LeftCount(), 1u);
    }
    LeftWorkAnswer discard(LeftWorkChoice::kDiscard);
    Start();
    EXPECT_EQ(discard.Shown().size(), 4);
    app_.reset();
    EXPECT_EQ(LeftCount(), 0u);
}

TEST_F(RecoveryUiTest, StoresAndLeavesWithoutAQuestionAtASignal) {
    for (const int number : {SIGTERM, SIGHUP}) {
        Start();
        ASSERT_TRUE(app_->OpenFile(WavFile("talk.wav")));
        ASSERT_TRUE(edit::Delete(Active(), {100, 300, 100}));
        QTimer::singleShot(0, &Frame(), [number] { std::raise(number); });
        EXPECT_EQ(QApplication::exec(), 0);
        app_.reset();
        const auto left = recovery::ListLeftWork(Records());
        ASSERT_EQ(left.size(), 1u) << number;
        EXPECT_EQ(left[0].frames, 7800u);
        EXPECT_TRUE(recovery::DiscardLeftWork(left[0]));
    }
}

TEST_F(RecoveryUiTest, OffersToReadAFileThatAnotherProgramChanged) {
    Start();
    ASSERT_TRUE(app_->OpenFile(WavFile("talk.wav")));
    const auto activate = [&] {
        QEvent event(QEvent::WindowActivate);
        QApplication::sendEvent(&Frame(), &event);
        return StatusText();
    };
    EXPECT_FALSE(activate().contains("another program"));
    WavParts parts;
    parts.data.assign(200, 7);
    WriteFileBytes(folder_ / "talk.wav", WavBytes(parts));
    EXPECT_TRUE(activate().contains("Read Again")) << activate().toStdString();
    Run(app_command::kReadAgain);
    EXPECT_EQ(Active().Sound().GetFrameCount(), 100u);
    EXPECT_EQ(Active().StateOfFile(), FileState::kAsItWas);
    std::filesystem::remove(folder_ / "talk.wav");
    EXPECT_TRUE(activate().contains("moved or deleted"));
}

}  // namespace
}  // namespace sonavel
