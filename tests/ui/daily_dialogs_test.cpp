// The dialogs of the later effects: what they show of the range, and the ways in which a value can
// be said.
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <cmath>

#include "effects/ui/fade_picture.h"
#include "support/patience.h"
#include "ui/effect_fixture.h"
#include "view/ui/loudness_worker.h"

namespace sonavel {
namespace {

class DailyDialogsTest : public EffectFixture {
  protected:
    static QDoubleSpinBox& Spin(QWidget& dialog, const char* name) {
        for (auto* box : dialog.findChildren<QDoubleSpinBox*>())
            if (box->accessibleName() == QLatin1String(name)) return *box;
        ADD_FAILURE() << name;
        return *dialog.findChild<QDoubleSpinBox*>();
    }
};

TEST_F(DailyDialogsTest, NormaliseShowsHowLoudTheRangeIs) {
    Open({.channels = 2, .bits = 16, .samplesPerSecond = 44100, .frames = 44100});
    for (std::uint32_t i = 0; i < 44100; ++i)
        Sound().SetSample(0, i, i == 100 ? 30000 : (i / 20 % 2 ? 16384 : -16384));
    View().State().SetSelection(200, 44100);
    QDialog& dialog = Show(effect_command::kNormalise);
    const auto text = [&](const char* name) { return Named<QLabel>(dialog, name)->text(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return text("loudness") != NotYetText(); }, kPatienceMs));
    EXPECT_EQ(text("sample peak"), "-6.0 dB");
    EXPECT_GT(text("true peak").section(u' ', 0, 0).toDouble(), -6.0);
    EXPECT_TRUE(text("loudness").endsWith("LUFS")) << text("loudness").toStdString();
}

TEST_F(DailyDialogsTest, NormaliseAsksOnlyWhatMatters) {
    Open({.channels = 2});
    QDialog& dialog = Show(effect_command::kNormalise);
    const auto boxes = dialog.findChildren<QComboBox*>();
    EXPECT_FALSE(Spin(dialog, "Loudness").isEnabled());
    EXPECT_TRUE(boxes[1]->isEnabled());
    boxes[0]->setCurrentIndex(1);
    EXPECT_TRUE(Spin(dialog, "Loudness").isEnabled());
    EXPECT_FALSE(boxes[1]->isEnabled());
    Close();
}

TEST_F(DailyDialogsTest, NormaliseCanEndWhileItStillMeasures) {
    Open({.channels = 2, .bits = 16, .samplesPerSecond = 44100, .frames = 4410000});
    ASSERT_TRUE(RunWith(effect_command::kNormalise, [](QDialog& dialog) { dialog.accept(); }));
    EXPECT_EQ(Sound().GetSample(0, 0), std::lround(32768 * std::pow(10, -0.05)));
}

TEST_F(DailyDialogsTest, FadesDrawTheirCurve) {
    Open({.samplesPerSecond = 1000, .frames = 4000});
    const struct {
        int command, curve;
        double begin, middle, end;
    } cases[] = {{effect_command::kFadeIn, 0, 0, 50, 100},
                 {effect_command::kFadeIn, 2, 0, 3.162, 100},
                 {effect_command::kFadeOut, 1, 100, 50, 0},
                 {effect_command::kFadeOut, 2, 100, 3.162, 0}};
    for (const auto& one : cases) {
        QDialog& dialog = Show(one.command);
        dialog.findChild<QComboBox*>()->setCurrentIndex(one.curve);
        const auto* picture = dialog.findChild<FadePicture*>();
        ASSERT_NE(picture, nullptr);
        EXPECT_NEAR(picture->PercentAt(0), one.begin, 1e-3);
        EXPECT_NEAR(picture->PercentAt(2), one.middle, 1e-3);
        EXPECT_NEAR(picture->PercentAt(4), one.end, 1e-3);
        Close();
    }
}

TEST_F(DailyDialogsTest, TempoTakesTheLengthThatIsTyped) {
    Open({.samplesPerSecond = 44100, .frames = 44100 * 3});
    for (const auto& [typed, frames] : {std::pair<const char*, std::uint32_t>{"0:02.345", 103415},
                                        {"100001#", 100001},
                                        {"4500ms", 198450}}) {
        Open({.samplesPerSecond = 44100, .frames = 44100 * 3});
        ASSERT_TRUE(RunWith(effect_command::kTempo, [&](QDialog& dialog) {
            auto* length = Named<QLineEdit>(dialog, "length");
            length->selectAll();
            QTest::keyClicks(length, QLatin1String(typed));
            dialog.accept();
        }));
        EXPECT_EQ(Sound().GetFrameCount(), frames) << typed;
    }
}

// The length that is shown has milliseconds alone, and may lie beyond the range of the tempo.
TEST_F(DailyDialogsTest, ALengthThatNobodyTypedIsNotRefused) {
    for (const std::uint32_t frames : {3u, 44101u}) {
        Open({.samplesPerSecond = 44100, .frames = frames});
        EXPECT_TRUE(RunWith(effect_command::kTempo, [](QDialog& dialog) {
            Spin(dialog, "Tempo").setValue(400);
            dialog.accept();
        }));
        EXPECT_EQ(Sound().GetFrameCount(), (frames + 2) / 4);
    }
}

TEST_F(DailyDialogsTest, TempoAndLengthFollowEachOther) {
    Open({.samplesPerSecond = 1000, .frames = 4000});
    QDialog& dialog = Show(effect_command::kTempo);
    auto* length = Named<QLineEdit>(dialog, "length");
    Spin(dialog, "Tempo").setValue(200);
    EXPECT_EQ(length->text(), "00:00:02.000");
    length->selectAll();
    QTest::keyClicks(length, "8");
    EXPECT_EQ(Spin(dialog, "Tempo").value(), 50);
    for (const char* wrong : {"0:99", "100", "word", "+1"}) {
        length->selectAll();
        QTest::keyClicks(length, wrong);
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible()) << wrong;
        EXPECT_EQ(HeaderOf(dialog), "The length can be 00:00:01.000 to 00:00:16.000.");
    }
    Close();
}

TEST_F(DailyDialogsTest, PitchIsSaidInSemitonesOrInPercent) {
    Open({});
    QDialog& dialog = Show(effect_command::kPitch);
    Spin(dialog, "Pitch").setValue(-12);
    QDoubleSpinBox* percent = dialog.findChildren<QDoubleSpinBox*>()[1];
    EXPECT_EQ(percent->value(), 50);
    percent->setValue(200);
    EXPECT_EQ(Spin(dialog, "Pitch").value(), 12);
    Close();
}

}  // namespace
}  // namespace sonavel
