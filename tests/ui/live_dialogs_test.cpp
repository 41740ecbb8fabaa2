// What is heard live of an effect's dialog and of the 3D editors, on a device that the test asks.
#include <QDoubleSpinBox>
#include <QSlider>

#include "effects/ui/level_bars.h"
#include "spatial/scene_points.h"
#include "spatial/ui/system_sound_dialog.h"
#include "spatial/ui/user_sound_dialog.h"
#include "support/patience.h"
#include "ui/effect_fixture.h"

namespace sonavel {
namespace {

using namespace effect_command;

constexpr float kSample = 100.0f / 32768;  // of every frame

class NotingMeter : public PeakObserver {
  public:
    void OnPeaks(std::int32_t left, std::int32_t right) override {
        greatestLeft = std::max(greatestLeft, left);
        greatestRight = std::max(greatestRight, right);
        lastLeft = left;
    }

    std::int32_t greatestLeft = 0;
    std::int32_t greatestRight = 0;
    std::int32_t lastLeft = -1;
};

class LiveDialogs : public EffectFixture {
  protected:
    QPushButton* LiveButton(QWidget& dialog) {
        for (const char* text : {"Li&ve", "Live"})
            if (QPushButton* button = ButtonOf(dialog, text)) return button;
        return nullptr;
    }
    QCheckBox& BypassOf(QWidget& dialog) {
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
            if (box->text().remove(u'&') == QLatin1String("Bypass")) return *box;
        throw std::runtime_error("no Bypass");
    }
    LevelBars& Levels(QWidget& dialog) {
        return *static_cast<LevelBars*>(Named<QWidget>(dialog, "liveLevels"));
    }
    bool IsHeard() const { return devices_.frameOut->IsOpen(); }
    // The device's clock goes on until the left ear hears what is wanted.
    testing::AssertionResult Hears(const std::function<bool(float left, float right)>& wanted) {
        QElapsedTimer timer;
        timer.start();
        std::vector<float> pairs{0, 0};
        while (timer.elapsed() < kPatienceMs) {
            pairs = devices_.frameOut->Hear(441);
            if (wanted(pairs[pairs.size() - 2], pairs.back())) return testing::AssertionSuccess();
            QTest::qWait(5);
        }
        return testing::AssertionFailure()
               << pairs[pairs.size() - 2] << ", " << pairs.back() << " is heard";
    }
    testing::AssertionResult HearsLevel(float share) {
        return Hears([share](float left, float) { return std::abs(left - share) < 1e-5f; });
    }

    SpatialMemory spatialMemory_;
};

TEST_F(LiveDialogs, AMovedSliderIsHeardAndBypassIsNot) {
    Open({});
    EffectDialog& dialog = Show(kVolume);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_FALSE(BypassOf(dialog).isEnabled());
    LiveButton(dialog)->click();
    ASSERT_TRUE(IsHeard());
    EXPECT_TRUE(LiveButton(dialog)->isChecked());
    EXPECT_TRUE(HearsLevel(kSample));
    dialog.findChild<QSlider*>()->setValue(300 - 250);
    EXPECT_TRUE(HearsLevel(2.5f * kSample));
    // The untouched sound at the same loudness is the same here.
    QTest::keyClick(dialog.focusWidget(), Qt::Key_B);
    EXPECT_TRUE(BypassOf(dialog).isChecked());
    dialog.findChild<QSlider*>()->setValue(300 - 100);
    EXPECT_TRUE(HearsLevel(kSample));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_B);
    EXPECT_FALSE(BypassOf(dialog).isChecked());
    LiveButton(dialog)->click();
    EXPECT_FALSE(IsHeard());
    EXPECT_EQ(Sound().GetSample(0, 10), 100) << "the sound was changed";
}

TEST_F(LiveDialogs, TheBypassKeyIsTakenBeforeTheFieldsThatHaveTheKeyboard) {
    Open({});
    EffectDialog& dialog = Show(kDynamics);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto* field = dialog.findChild<QDoubleSpinBox*>();
    field->setFocus();
    LiveButton(dialog)->click();
    QTest::keyClick(field, Qt::Key_B);
    EXPECT_TRUE(BypassOf(dialog).isChecked());
    LiveButton(dialog)->click();
    QTest::keyClick(field, Qt::Key_B);
    EXPECT_TRUE(BypassOf(dialog).isChecked()) << "it means nothing while nothing is heard";
}

TEST_F(LiveDialogs, EveryEffectWithAProcessorIsHeardAndTheOthersSayWhyNot) {
    Open({});
    for (const Effect& effect : Effects()) {
        if (effect.parameters.empty()) continue;
        SCOPED_TRACE(effect.name);
        EffectDialog& dialog = Show(effect.commandId);
        QPushButton* live = LiveButton(dialog);
        ASSERT_TRUE(live);
        const char* const refusal = LiveRefusal(effect, Sound());
        EXPECT_EQ(live->isEnabled(), refusal == nullptr);
        EXPECT_EQ(live->toolTip() == QString::fromUtf8(refusal ? refusal : "-"),
                  refusal != nullptr);
        if (refusal) continue;
        live->click();
        EXPECT_TRUE(Hears([](float left, float) { return left != 0; }));
        Close();
        EXPECT_FALSE(IsHeard());
    }
}

TEST_F(LiveDialogs, LiveAndThePreviewTakeTurns) {
    Open({.frames = 44100});
    EffectDialog& dialog = Show(kFlanger);
    QPushButton* preview = ButtonOf(dialog, "&Preview");
    LiveButton(dialog)->click();
    ASSERT_TRUE(IsHeard());
    preview->click();
    EXPECT_FALSE(IsHeard());
    EXPECT_TRUE(Document().Preview().IsPlaying());
    LiveButton(dialog)->click();
    EXPECT_TRUE(IsHeard());
    EXPECT_FALSE(Document().Preview().IsPlaying());
    Close();
    EXPECT_FALSE(IsHeard());
}

TEST_F(LiveDialogs, OnlyTheSelectionIsHeard) {
    Open({});
    for (std::uint32_t i = 0; i < 1000; ++i) Sound().SetSample(0, i, 0);
    View().State().SetSelection(1000, 1100);
    LiveButton(Show(kVolume))->click();
    EXPECT_TRUE(HearsLevel(kSample));
    for (int i = 0; i < 20; ++i) {
        QTest::qWait(5);
        for (const float value : devices_.frameOut->Hear(100)) ASSERT_NEAR(value, kSample, 1e-6);
    }
}

TEST_F(LiveDialogs, ADeviceThatIsLostOrCannotBeHadIsShownOnce) {
    Open({});
    EffectDialog& dialog = Show(kVolume);
    devices_.frameOut->failure = kWaveNoDriver;
    LiveButton(dialog)->click();
    EXPECT_FALSE(LiveButton(dialog)->isChecked());
    EXPECT_EQ(prompts_.messages.size(), 1u);
    devices_.frameOut->failure = kWaveSuccess;
    LiveButton(dialog)->click();
    EXPECT_TRUE(HearsLevel(kSample));
    devices_.frameOut->Lose(kWaveNoDriver);
    devices_.frameOut->Lose(kWaveNoDriver);
    QTest::qWait(1);
    EXPECT_EQ(prompts_.messages.size(), 2u);
    EXPECT_FALSE(IsHeard());
    EXPECT_FALSE(LiveButton(dialog)->isChecked());
    LiveButton(dialog)->click();
    EXPECT_TRUE(IsHeard());
}

TEST_F(LiveDialogs, OkAppliesWhatWasHeard) {
    Open({});
    EXPECT_TRUE(RunWith(kVolume, [this](QDialog& dialog) {
        LiveButton(dialog)->click();
        dialog.findChild<QSlider*>()->setValue(300 - 250);
        QTest::keyClick(&dialog, Qt::Key_Return);
    }));
    EXPECT_FALSE(IsHeard());
    EXPECT_EQ(Sound().GetSample(0, 10), 250);
}

TEST_F(LiveDialogs, DialogsAreHeardAtOnceWhereThatIsWanted) {
    Open({});
    EXPECT_TRUE(commands_->RunCommand(kLiveAtOnce));
    EXPECT_TRUE(commands_->StateOfCommand(kLiveAtOnce).checked);
    for (const bool wanted : {true, false}) {
        for (const int commandId : {kVolume, kTempo})
            EXPECT_FALSE(RunWith(commandId, [&](QDialog& dialog) {
                EXPECT_EQ(IsHeard(), wanted && commandId == kVolume);
                dialog.reject();
            }));
        EXPECT_TRUE(commands_->RunCommand(kLiveAtOnce));
    }
}

TEST_F(LiveDialogs, APointDraggedToTheOtherSideIsHeardThere) {
    Open({.channels = 1, .frames = 44100});
    for (std::uint32_t i = 0; i < 44100; ++i) Sound().SetSample(0, i, i / 40 % 2 ? 3000 : -3000);
    NotingMeter meter;
    View().Playing().SetMeter(&meter);
    UserSoundDialog dialog(View(), spatialMemory_, SourceMotion::kPositional, nullptr);
    LiveButton(dialog)->click();
    ASSERT_TRUE(IsHeard());
    const auto isLouder = [this](bool right) {
        return Hears([&](float, float) {
            double power[2] = {0, 0};
            const std::vector<float> pairs = devices_.frameOut->Hear(1024);
            for (std::size_t i = 0; i < pairs.size(); ++i)
                power[i % 2] += double{pairs[i]} * pairs[i];
            return power[right ? 1 : 0] > 2 * power[right ? 0 : 1];
        });
    };
    Q_EMIT dialog.Scene().PointDragged(0, {0.7f, 0, 0});
    EXPECT_TRUE(isLouder(true));
    Q_EMIT dialog.Scene().PointDragged(0, {-0.7f, 0, 0});
    EXPECT_TRUE(isLouder(false));
    QTest::qWait(50);
    ASSERT_TRUE(dialog.Scene().Ball());
    EXPECT_LT(dialog.Scene().Ball()->x, -0.6f) << "the ball stands elsewhere";
    EXPECT_GT(meter.greatestLeft, 1000);
    EXPECT_GT(meter.greatestRight, 1000);
    EXPECT_GT(Levels(dialog).Left(), 0.3);
    EXPECT_GT(Levels(dialog).Right(), 0.1);
    LiveButton(dialog)->click();
    EXPECT_FALSE(dialog.Scene().Ball());
    EXPECT_EQ(meter.lastLeft, 0);
    EXPECT_EQ(Levels(dialog).Left(), 0);
    View().Playing().SetMeter(nullptr);
}

TEST_F(LiveDialogs, TheBallStandsWhereTheMovingSourceIsHeard) {
    Open({.channels = 1, .frames = 44100});
    SystemSoundDialog dialog(View(), spatialMemory_, SourceMotion::kMoving, nullptr);
    LiveButton(dialog)->click();
    // Half of the range, less what lies between the device and the ear.
    for (std::uint32_t heard = 0; heard < 22050;) {
        const std::vector<float> pairs = devices_.frameOut->Hear(441, 0);
        heard = static_cast<std::uint32_t>(dialog.findChild<LiveToggle*>()->HeardShare() * 44100);
        QTest::qWait(2);
    }
    devices_.frameOut->Hear(1, 4410);
    const double share = dialog.findChild<LiveToggle*>()->HeardShare();
    EXPECT_NEAR(share, 0.4, 0.02);
    QTest::qWait(40);
    ASSERT_TRUE(dialog.Scene().Ball());
    const SourcePosition wanted = PositionWhilePlaying(CourseOf(dialog.Placed(), 1), share);
    EXPECT_NEAR(dialog.Scene().Ball()->x, wanted.x, 1e-4);
    EXPECT_NEAR(dialog.Scene().Ball()->y, wanted.y, 1e-4);
}

}  // namespace
}  // namespace sonavel
