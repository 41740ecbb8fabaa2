#include "meter/meter_scale.h"

#include <gtest/gtest.h>

#include "support/test_files.h"

namespace sonavel {
namespace {

constexpr MeterScale kScales[] = {MeterScale::kThirtyDb, MeterScale::kSixtyDb,
                                  MeterScale::kNinetyDb, MeterScale::kAbsolute};

// Every character six pixels wide, twelve high.
const MeterTextSize kText{[](std::string_view text) { return static_cast<int>(text.size()) * 6; },
                          12};

TEST(MeterScaleTest, BarLengthsOfTheFourScales) {
    const struct {
        MeterLevel level;
        int filled[4];  // of 300 pixels, by scale
    } cases[] = {
        {{0}, {0, 0, 0, 0}},
        {{32767}, {300, 300, 300, 299}},
        // Exactly 0 dB reads as no level, on the dB scales alone.
        {{-32768}, {0, 0, 0, 300}},
        {{32768}, {0, 0, 0, 300}},
        {{16384}, {240, 270, 280, 150}},   // -6.02 dB
        {{-16384}, {240, 270, 280, 150}},  // the sign does not count
        {{3277}, {101, 201, 234, 30}},     // -20.0 dB
        {{33}, {0, 1, 101, 0}},            // -59.9 dB
        {{1}, {0, 0, 0, 0}},               // -90.3 dB, below every floor
        {{64, 128}, {240, 270, 280, 150}},
        {{127, 128}, {300, 300, 300, 297}},
        {{128, 128}, {0, 0, 0, 300}},
        {{-999999}, {0, 0, 0, 0}},  // the player had nothing to measure
        {{40000}, {300, 300, 300, 300}},
        {{100, 0}, {0, 0, 0, 0}},
    };
    for (const auto& c : cases)
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_EQ(FilledLength(c.level, kScales[i], 300), c.filled[i])
                << c.level.sample << "/" << c.level.reference << " scale " << i;
    EXPECT_EQ(FilledLength({32767}, MeterScale::kSixtyDb, 0), 0);
    EXPECT_EQ(FilledLength({32767}, MeterScale::kSixtyDb, -4), 0);
}

TEST(MeterScaleTest, DecibelsOfLevels) {
    EXPECT_NEAR(DecibelsOf({32767}, MeterScale::kThirtyDb), -0.000265, 1e-6);
    EXPECT_EQ(DecibelsOf({-32768}, MeterScale::kThirtyDb), 0.0);
    EXPECT_EQ(DecibelsOf({0}, MeterScale::kNinetyDb), -90);
}

TEST(MeterScaleTest, TheBarsShapeTurnsTheMeters) {
    EXPECT_EQ(LayOutMeters({0, 0, 300, 44}),
              (MeterPlaces{MeterDirection::kToTheRight, {4, 4, 296, 20}, {4, 24, 296, 40}}));
    EXPECT_EQ(LayOutMeters({0, 0, 44, 300}),
              (MeterPlaces{MeterDirection::kUpwards, {4, 4, 20, 296}, {24, 4, 40, 296}}));
    EXPECT_EQ(LayOutMeters({0, 0, 50, 50}).direction, MeterDirection::kToTheRight);
    EXPECT_EQ(LayOutMeters({0, 0, 49, 50}).direction, MeterDirection::kUpwards);
}

TEST(MeterScaleTest, OnlyTheBandBetweenTwoLevelsChanges) {
    EXPECT_EQ(ChangedBand(100, 140), (MeterBand{100, 140}));
    EXPECT_EQ(ChangedBand(140, 100), (MeterBand{100, 140}));
    const Rectangle inner{10, 20, 18, 320};
    EXPECT_EQ(BandIn(inner, MeterDirection::kUpwards, {100, 140}), (Rectangle{10, 180, 18, 220}));
    EXPECT_EQ(BandIn({10, 20, 310, 28}, MeterDirection::kToTheRight, {100, 140}),
              (Rectangle{110, 20, 150, 28}));
}

TEST(MeterScaleTest, TenTicksWithTheLabelsOfTheirScale) {
    const std::pair<MeterScale, const char*> cases[] = {
        {MeterScale::kThirtyDb, "-30 |-27 |-24 |-21 |-18 |-15 |-12 |-9 |-6 |-3 |"},
        {MeterScale::kSixtyDb, "-60 |-54 |-48 |-42 |-36 |-30 |-24 |-18 |-12 |-6 |"},
        {MeterScale::kNinetyDb, "-90 |-81 |-72 |-63 |-54 |-45 |-36 |-27 |-18 |-9 |"},
        {MeterScale::kAbsolute, "0%|10%|20%|30%|40%|50%|60%|70%|80%|90%|"}};
    for (const auto& [scale, labels] : cases) {
        const auto ticks =
            LayOutMeterTicks({0, 0, 400, 14}, MeterDirection::kToTheRight, scale, kText);
        std::string found;
        for (const MeterTick& tick : ticks) found += tick.label + "|";
        EXPECT_EQ(found, labels);
        EXPECT_EQ(ticks.at(0).place, 0);
        EXPECT_EQ(ticks.at(9).place, 360);
    }
    EXPECT_EQ(
        LayOutMeterTicks({0, 0, 400, 14}, MeterDirection::kToTheRight, MeterScale::kThirtyDb, kText)
            .at(1)
            .labelArea,
        (Rectangle{42, 1, 66, 13}));
}

TEST(MeterScaleTest, LabelsStandOnlyWhereTheyFit) {
    const struct {
        Rectangle inner;
        MeterDirection direction;
        int labels;
    } cases[] = {
        {{0, 0, 400, 14}, MeterDirection::kToTheRight, 10},
        {{0, 0, 400, 11}, MeterDirection::kToTheRight, 0},  // too thin for a line
        {{0, 0, 200, 14}, MeterDirection::kToTheRight, 6},  // the long ones touch
        {{0, 0, 10, 14}, MeterDirection::kToTheRight, 0},
        {{0, 0, 30, 400}, MeterDirection::kUpwards, 10},
        {{0, 0, 17, 400}, MeterDirection::kUpwards, 0},
        {{0, 0, 18, 400}, MeterDirection::kUpwards, 3},  // "-9 ", "-6 " and "-3 "
        {{0, 0, 30, 100}, MeterDirection::kUpwards, 5},
    };
    for (const auto& c : cases) {
        const auto ticks = LayOutMeterTicks(c.inner, c.direction, MeterScale::kThirtyDb, kText);
        int labels = 0;
        Rectangle before;
        for (const MeterTick& tick : ticks) {
            if (tick.labelArea.Empty()) continue;
            ++labels;
            EXPECT_EQ(tick.labelArea.Intersected(c.inner), tick.labelArea);
            EXPECT_TRUE(tick.labelArea.Intersected(before).Empty());
            before = tick.labelArea;
        }
        EXPECT_EQ(labels, c.labels) << c.inner.right;
    }
}

TEST(MeterScaleTest, ReadOutTexts) {
    EXPECT_EQ(MeterReadOut({16384}), "-6.0dB\n(50.00%)");
    EXPECT_EQ(MeterReadOut({-32768}), "0.0dB\n(100.00%)");
    EXPECT_EQ(MeterReadOut({0}), "-Inf. dB\n(0.00%)");
    EXPECT_EQ(MeterReadOutLine({1, 128}), "-42.1dB ( 0.78% )");
    EXPECT_EQ(MeterReadOutLine({-999999}), "-Inf. dB ( 0.00% )");
}

TEST(MeterScaleTest, ReadOutsTakeRoomOnlyWhereThereIsEnough) {
    const auto with = [](const Rectangle& bar) {
        return LayOutMeterBar(bar, MeterReadOuts::kWhereTheyFit, kText);
    };
    const MeterBarPlaces wide = with({0, 0, 600, 44});
    EXPECT_EQ(wide.meters, LayOutMeters({0, 0, 480, 44}));
    EXPECT_EQ(wide.leftReadOut, (Rectangle{480, 4, 600, 20}));
    EXPECT_EQ(wide.rightReadOut, (Rectangle{480, 24, 600, 40}));
    const MeterBarPlaces tall = with({0, 0, 120, 400});
    EXPECT_EQ(tall.meters, LayOutMeters({0, 0, 120, 370}));
    EXPECT_EQ(tall.leftReadOut, (Rectangle{0, 370, 60, 400}));
    for (const Rectangle& bar : {Rectangle{0, 0, 200, 44}, Rectangle{0, 0, 600, 20},
                                 Rectangle{0, 0, 44, 400}, Rectangle{0, 0, 120, 130}}) {
        EXPECT_EQ(with(bar), (MeterBarPlaces{LayOutMeters(bar), {}, {}})) << bar.right;
    }
    EXPECT_EQ(LayOutMeterBar({0, 0, 600, 44}, MeterReadOuts::kHidden, kText).meters,
              LayOutMeters({0, 0, 600, 44}));
}

TEST(MeterScaleTest, SettingsComeBackButTheAbsoluteScale) {
    const TemporaryFolder folder;
    ProfileFile file(folder / "Options.ini");
    EXPECT_EQ(MeterSettings::Read(file.Read()), (MeterSettings{MeterScale::kThirtyDb, 0}));
    const MeterScale readBack[] = {MeterScale::kThirtyDb, MeterScale::kSixtyDb,
                                   MeterScale::kNinetyDb, MeterScale::kSixtyDb};
    for (std::size_t i = 0; i < 4; ++i) {
        ASSERT_TRUE(WriteNumber(file, SettingId::kMeterScale, static_cast<int>(i)));
        EXPECT_EQ(MeterSettings::Read(file.Read()).scale, readBack[i]);
    }
    ASSERT_TRUE(WriteNumber(file, SettingId::kMeterLabels, 1));
    EXPECT_EQ(MeterSettings::Read(file.Read()).showLabels, 1);
    file.SetInteger("__SOUND_PLAY_METER", "PLAYING METER TYPE", -5);
    EXPECT_EQ(MeterSettings::Read(file.Read()).scale, MeterScale::kSixtyDb);
}

}  // namespace
}  // namespace sonavel
