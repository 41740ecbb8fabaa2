// The dialog "Convert": what it shows before OK, and what it asks only where it matters.
#include "effects/ui/convert_dialog.h"

#include <QDialogButtonBox>

#include "ui/effect_fixture.h"

namespace sonavel {
namespace {

class ConvertDialogTest : public EffectFixture {
  protected:
    static QComboBox& Box(QWidget& dialog, int index) {
        return *dialog.findChildren<QComboBox*>()[index];
    }
    static QStringList Then(QWidget& dialog) {
        QStringList texts;
        for (const QLabel* label : dialog.findChildren<QLabel*>("then")) texts << label->text();
        return texts;
    }
    static bool CanOk(QWidget& dialog) {
        return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
    }
};

constexpr int kRate = 0, kBits = 1, kChannels = 2, kMode = 3;

TEST_F(ConvertDialogTest, ShowsWhatResultsAndTakesNothingThatChangesNothing) {
    Open({.channels = 2, .bits = 16, .samplesPerSecond = 44100, .frames = 88200});
    ConvertDialog dialog(Sound());
    EXPECT_FALSE(CanOk(dialog));
    EXPECT_FALSE(Box(dialog, kMode).isEnabled());
    Box(dialog, kRate).setCurrentText("22050");
    Box(dialog, kBits).setCurrentIndex(2);
    Box(dialog, kChannels).setCurrentIndex(0);
    EXPECT_TRUE(CanOk(dialog));
    EXPECT_TRUE(Box(dialog, kMode).isEnabled());
    EXPECT_EQ(Then(dialog),
              (QStringList{"22,050 Hz", "32-bit float", "Mono", "00:00:02.000", "176400 Bytes"}));
    for (QRadioButton* button : dialog.findChildren<QRadioButton*>())
        if (button->text().startsWith("New")) button->setChecked(true);
    EXPECT_EQ(Then(dialog)[3], "00:00:04.000");
    Box(dialog, kRate).setCurrentText("0");
    EXPECT_FALSE(CanOk(dialog));
    EXPECT_FALSE(Named<QLabel>(dialog, "refusal")->text().isEmpty());
}

TEST_F(ConvertDialogTest, TheCommandConvertsTheActiveSound) {
    Open({.channels = 2, .bits = 16, .samplesPerSecond = 44100, .frames = 4410});
    const Outcome done = RunWith(effect_command::kConvert, [](QDialog& dialog) {
        Box(dialog, kRate).setCurrentText("48000");
        Box(dialog, kChannels).setCurrentIndex(0);
        dialog.accept();
    });
    ASSERT_TRUE(done) << done.Reason();
    EXPECT_EQ(Sound().GetSamplesPerSecond(), 48000u);
    EXPECT_EQ(Sound().GetFrameCount(), 4800u);
    EXPECT_EQ(Sound().GetChannels(), 1u);
}

}  // namespace
}  // namespace sonavel
