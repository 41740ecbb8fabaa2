// The effects' pictures show what the effects do, and the curve's points can be dragged.
#include <QCheckBox>

#include "effects/modulator.h"
#include "effects/ui/dynamics_picture.h"
#include "effects/ui/equalizer_picture.h"
#include "effects/ui/flanger_picture.h"
#include "effects/ui/modulator_picture.h"
#include "effects/ui/reverb_picture.h"
#include "ui/effect_fixture.h"

namespace sonavel {
namespace {

class EffectPicturesTest : public EffectFixture {
  protected:
    static void Drag(QWidget& picture, QPointF from, QPointF to) {
        QTest::mousePress(&picture, Qt::LeftButton, {}, from.toPoint());
        QTest::mouseMove(&picture, to.toPoint());
        QTest::mouseRelease(&picture, Qt::LeftButton, {}, to.toPoint());
    }
};

TEST_F(EffectPicturesTest, EqualizerShowsWhatASineIsRaisedBy) {
    EqualizerParameters parameters;
    parameters.positions = {-120, 0, 60, -200, 400, 0, -400};
    for (const double hertz : {60.0, 900.0, 2400.0, 12000.0}) {
        EqualizerFilters filters;
        std::vector<float> sine(88200);
        for (std::size_t i = 0; i < sine.size(); ++i)
            sine[i] = static_cast<float>(std::sin(2 * 3.14159265358979 * hertz * i / 44100));
        filters.Process(sine, parameters);
        double power = 0;
        for (std::size_t i = 44100; i < sine.size(); ++i) power += double{sine[i]} * sine[i];
        EXPECT_NEAR(EqualizerGainDb(parameters, hertz, 44100), 10 * std::log10(power / 22050), 0.05)
            << hertz;
    }
}

TEST_F(EffectPicturesTest, ModulatorShowsTheGainsOfItsOscillators) {
    const ModulatorParameters parameters{{40, 100, 90}, {700, 20, 60}};
    CModOscillator first(parameters.first, 22050, 3 * kPieceFrames);
    CModOscillator second(parameters.second, 22050, 3 * kPieceFrames);
    std::vector<float> gains(kPieceFrames, 1.0F);
    for (std::uint32_t start = 0; start < 10000; start += kPieceFrames) {
        std::fill(gains.begin(), gains.end(), 1.0F);
        first.Run(start, gains);
        second.Run(start, gains);
        for (std::uint32_t i = 0; i < kPieceFrames; i += 37)
            ASSERT_NEAR(ModulatorGain(parameters, 22050, (start + i + 0.5) / 22050), gains[i],
                        0.01);
    }
}

TEST_F(EffectPicturesTest, FlangerSweepsFromNothingToItsDelayAndBack) {
    FlangerPicture picture(44100, nullptr);
    picture.SetParameters({80, 5});
    EXPECT_NEAR(picture.DelayMsAt(0), 0, 1e-9);
    EXPECT_NEAR(picture.DelayMsAt(1), 8, 0.03);
    EXPECT_NEAR(picture.DelayMsAt(0.5), 4, 0.03);
    EXPECT_NEAR(picture.DelayMsAt(2), 0, 0.03);
}

TEST_F(EffectPicturesTest, ReverberationShowsTheRoomsOwnAnswer) {
    const ReverbParameters room{120, 3000, 6, 70, 30};
    const std::vector<float> response = ReverbResponse(room, 44100, 1.5);
    const ReverbTaps taps = MakeReverbTaps(room, 44100);
    ASSERT_EQ(response.size(), 66150u);
    for (const ReverbTap& tap : taps.taps) EXPECT_NE(response[tap.delay], 0) << tap.delay;
    const auto energy = [&](std::size_t from) {
        double sum = 0;
        for (std::size_t i = from; i < from + 11025; ++i) sum += double{response[i]} * response[i];
        return sum;
    };
    EXPECT_LT(energy(50000), energy(20000) / 4);
}

struct DragCase {
    DynamicsFields before;
    DynamicsPoint point;
    double input, output;
    DynamicsFields after;
};

TEST_F(EffectPicturesTest, DraggedPointsSetThresholdAndRatios) {
    constexpr auto kKnee = DynamicsPoint::kKnee;
    constexpr auto kEnd = DynamicsPoint::kEnd;
    const DragCase cases[] = {
        {{100, 1, 1}, kKnee, 50, 25, {50, 2, 1}},     {{50, 1, 1}, kEnd, 100, 60, {50, 1, 5}},
        {{50, 1, 1}, kEnd, 30, 50, {50, 1, 20}},      {{50, 1, 1}, kKnee, 120, 130, {100, 1, 1}},
        {{100, 1, 1}, kEnd, 100, 10, {100, 1, 1}},    {{50, 3, 1}, kKnee, -5, 40, {0, 3, 1}},
        {{50, 1, 1}, kKnee, 0.5, 100, {0.5, 0.1, 1}},
    };
    for (const DragCase& drag : cases) {
        const DynamicsFields after =
            DragDynamicsPoint(drag.before, drag.point, drag.input, drag.output);
        EXPECT_DOUBLE_EQ(after.threshold, drag.after.threshold);
        EXPECT_DOUBLE_EQ(after.below, drag.after.below);
        EXPECT_DOUBLE_EQ(after.above, drag.after.above);
    }
}

TEST_F(EffectPicturesTest, DraggingThePointsMovesTheDynamicsFields) {
    Open({});
    EffectDialog& dialog = Show(effect_command::kDynamics);
    auto* picture = dialog.findChildren<DynamicsPicture*>()[0];
    const auto fields = dialog.findChildren<QDoubleSpinBox*>();
    Drag(*picture, *picture->PlaceOf(DynamicsPoint::kKnee), picture->PointAt(50, 25));
    EXPECT_NEAR(fields[0]->value(), 50, 0.7);
    EXPECT_NEAR(fields[1]->value(), 2, 0.1);
    // Linked at first.
    EXPECT_EQ(fields[3]->value(), fields[0]->value());
    dialog.findChild<QCheckBox*>()->click();
    Drag(*picture, *picture->PlaceOf(DynamicsPoint::kEnd), picture->PointAt(100, 50));
    EXPECT_NEAR(fields[2]->value(), 2, 0.1);
    EXPECT_EQ(fields[5]->value(), 1);
    // A press beside every point moves nothing.
    const std::vector<double> before = dialog.Values();
    Drag(*picture, picture->PointAt(10, 90), picture->PointAt(60, 60));
    EXPECT_EQ(dialog.Values(), before);
    EXPECT_EQ(fields[0]->text(), QString::asprintf("%5.2f", fields[0]->value()));
}

TEST_F(EffectPicturesTest, RedrawWhileAControlMoves) {
    Open({});
    for (const CommandInfo& row : EffectCommands::Rows().first(7)) {
        EffectDialog& dialog = Show(row.id);
        auto* picture = dialog.findChild<PlotWidget*>();
        if (!picture) continue;
        SCOPED_TRACE(row.menuText);
        for (QDoubleSpinBox* field : dialog.findChildren<QDoubleSpinBox*>())
            if (field->maximum() <= 100) field->setValue(field->maximum() / 2);
        const QImage before = picture->grab().toImage();
        for (auto* slider : dialog.findChildren<QAbstractSlider*>())
            slider->setValue(slider->maximum() / 2);
        for (QDoubleSpinBox* field : dialog.findChildren<QDoubleSpinBox*>())
            field->setValue(field->maximum() / 3);
        EXPECT_NE(picture->grab().toImage(), before);
    }
}

}  // namespace
}  // namespace sonavel
