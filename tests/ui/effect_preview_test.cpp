// The effects' commands: previews heard and stopped, OK with its undo step, and what becomes of a
// preview.
#include <QCheckBox>
#include <QProgressBar>
#include <QSlider>

#include "ui/effect_fixture.h"

namespace sonavel {
namespace {

using namespace effect_command;

class EffectPreviewTest : public EffectFixture {
  protected:
    QProgressBar& Bar() { return *dialog_->findChild<QProgressBar*>(); }
    QLabel& Percent() { return *Named<QLabel>(*dialog_, "percent"); }
};

TEST_F(EffectPreviewTest, IsHeardWithItsPercentageUntilItsEnd) {
    const std::pair<int, const char*> instructions[] = {
        {kVolume, "Select Volume "},
        {kFlanger, "Select Delay Factor"},
        {kEqualizer, "Select Tab Number or Delay Time"},
        {kReverb, "   Reverberation Setting"},
    };
    Open({.frames = 100 * 1024});
    for (const auto& [commandId, instruction] : instructions) {
        SCOPED_TRACE(instruction);
        EffectDialog& dialog = Show(commandId);
        EXPECT_FALSE(Bar().isVisible() || Percent().isVisible());
        QPushButton* button = ButtonOf(dialog, "&Preview");
        button->click();
        EXPECT_EQ(button->text(), "&Stop");
        EXPECT_EQ(HeaderOf(dialog), "");
        EXPECT_TRUE(Bar().isVisible() && Percent().isVisible());
        for (int block = 0; block < 42; ++block) devices_.Pump();
        EXPECT_NEAR(Bar().value(), 42, 3);
        EXPECT_EQ(Percent().text(), QString::asprintf("%3d%%", Bar().value()));
        devices_.PumpUntilIdle();
        EXPECT_EQ(button->text(), "&Preview");
        EXPECT_EQ(HeaderOf(dialog), instruction);
        EXPECT_FALSE(Bar().isVisible() || Percent().isVisible());
        EXPECT_EQ(Bar().value(), 0);
    }
}

TEST_F(EffectPreviewTest, StopsAtTheButtonAndWhenTheDialogCloses) {
    Open({.frames = 100 * 1024});
    QPushButton* button = ButtonOf(Show(kVolume), "&Preview");
    button->click();
    EXPECT_TRUE(Document().Preview().IsPlaying());
    button->click();
    EXPECT_FALSE(Document().Preview().IsPlaying());
    EXPECT_EQ(button->text(), "&Preview");
    EXPECT_EQ(HeaderOf(*dialog_), "Select Volume ");
    button->click();
    Close();
    EXPECT_FALSE(Document().Preview().IsPlaying());
    // The view gets the positions again.
    Sound().Play(0);
    devices_.Pump();
    devices_.Pump();
    EXPECT_TRUE(View().Playing().PlayFrame().has_value());
}

TEST_F(EffectPreviewTest, HoldsTheDialogWhileItIsComputed) {
    Open({});
    EffectDialog& dialog = Show(kFlanger);
    QPushButton* button = ButtonOf(dialog, "&Preview");
    button->setFocus();
    bool held = false;
    progress_.whenRunning = [&] {
        held = !dialog.isEnabled();
        dialog.reject();
        dialog.close();
    };
    button->click();
    EXPECT_TRUE(held);
    EXPECT_TRUE(dialog.isVisible() && dialog.isEnabled());
    EXPECT_EQ(dialog.focusWidget(), button);
    EXPECT_TRUE(Document().Preview().IsPlaying());
}

TEST_F(EffectPreviewTest, SaysWhyThereIsNothingToHear) {
    Open({});
    progress_.cancelAtPoll = 0;
    QPushButton* button = ButtonOf(Show(kFlanger), "&Preview");
    button->click();
    EXPECT_EQ(HeaderOf(*dialog_), "The effect was cancelled.");
    EXPECT_EQ(button->text(), "&Preview");
    EXPECT_FALSE(Document().Preview().HasData());
    EXPECT_FALSE(Bar().isVisible());
}

TEST_F(EffectPreviewTest, OkAppliesToTheSelectionAsOneUndoStep) {
    Open({});
    View().State().SetSelection(1000, 2000);
    EXPECT_FALSE(RunWith(kVolume, [](QDialog& dialog) {
        dialog.findChild<QSlider*>()->setValue(0);
        dialog.reject();
    }));
    EXPECT_EQ(Sound().GetSample(0, 1500), 100);
    EXPECT_FALSE(Document().CanUndo());

    EXPECT_TRUE(RunWith(kVolume, [](QDialog& dialog) {
        dialog.findChild<QSlider*>()->setValue(300 - 250);
        QTest::keyClick(&dialog, Qt::Key_Return);
    }));
    EXPECT_EQ(Sound().GetSample(1, 1000), 250);
    EXPECT_EQ(Sound().GetSample(0, 999), 100);
    EXPECT_EQ(Sound().GetSample(0, 2000), 100);
    EXPECT_TRUE(Document().Undo());
    EXPECT_EQ(Sound().GetSample(1, 1000), 100);
    EXPECT_FALSE(Document().CanUndo());
}

TEST_F(EffectPreviewTest, OkHoldsAtFullScaleWhereThatIsChosen) {
    Open({});
    Sound().SetSample(1, 1000, 20000);
    EXPECT_TRUE(RunWith(kVolume, [](QDialog& dialog) {
        dialog.findChild<QSlider*>()->setValue(0);
        dialog.findChild<QCheckBox*>()->click();
        ButtonOf(dialog, "&Preview")->click();
        QTest::keyClick(&dialog, Qt::Key_Return);
    }));
    EXPECT_EQ(Sound().GetSample(1, 1000), 32767);
    EXPECT_EQ(Sound().GetSample(0, 1000), 300);
    // The preview no longer fits.
    EXPECT_FALSE(commands_->StateOfCommand(kOpenPreview).enabled);
}

TEST_F(EffectPreviewTest, PanpotRefusesAMonoSoundAfterOk) {
    Open({.channels = 1});
    EXPECT_FALSE(RunWith(kPanpot, [](QDialog& dialog) { dialog.accept(); }));
    EXPECT_EQ(prompts_.messages,
              std::vector<std::string>{"Can not use Panpot/Crossfade in Mono File."});
}

TEST_F(EffectPreviewTest, OpensAsANewDocumentTitledAfterItsEffect) {
    EXPECT_FALSE(commands_->StateOfCommand(kVolume).enabled);
    Open({});
    EXPECT_TRUE(commands_->StateOfCommand(kVolume).enabled);
    EXPECT_FALSE(commands_->StateOfCommand(kOpenPreview).enabled);
    EXPECT_TRUE(RunWith(kEqualizer, [](QDialog& dialog) {
        ButtonOf(dialog, "&Preview")->click();
        dialog.accept();
    }));
    const CSoundDoc& source = Document();
    EXPECT_FALSE(source.GetModified());
    ASSERT_TRUE(commands_->StateOfCommand(kOpenPreview).enabled);
    EXPECT_TRUE(commands_->RunCommand(kOpenPreview));
    ASSERT_NE(&Document(), &source);
    EXPECT_EQ(Document().Title(), "Equalizer_1");
    EXPECT_EQ(Sound().GetFrameCount(), 4096u);
    EXPECT_EQ(Sound().GetSample(0, 2000), source.Preview().GetSample(0, 2000));
}

TEST_F(EffectPreviewTest, CommandsRestWhileRecordingAndForEmptySounds) {
    Open({.frames = 0});
    EXPECT_FALSE(commands_->StateOfCommand(kReverb).enabled);
    Open({});
    EXPECT_EQ(EffectCommands::Rows().size(), Effects().size() + 6);
    for (const CommandInfo& row : EffectCommands::Rows())
        EXPECT_TRUE(commands_->HandlesCommand(row.id));
    ASSERT_TRUE(Document().StartRecording());
    EXPECT_FALSE(commands_->StateOfCommand(kReverb).enabled);
    EXPECT_FALSE(Document().StopRecording(0)) << "nothing was recorded";
}

}  // namespace
}  // namespace sonavel
