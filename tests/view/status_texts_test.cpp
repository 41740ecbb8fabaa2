#include "view/state/status_texts.h"

#include <gtest/gtest.h>

#include "view/random_sound.h"

namespace sonavel {
namespace {

TEST(StatusTexts, Zoom) {
    EXPECT_EQ(ZoomText(71, 100), "Zoom (1 : 71) 100.000%");
    EXPECT_EQ(ZoomText(1, 7112.9032), "Zoom (1 : 1) 7112.903%");
    EXPECT_EQ(ZoomText(0, 0), "");
}

TEST(StatusTexts, SampleValues) {
    RandomSound stereo(2, 16, 10);
    stereo.wave.SetSample(0, 3, -12);
    stereo.wave.SetSample(1, 3, 40);
    EXPECT_EQ(SampleValuesText(stereo.wave, 3), "(Sample Value) Left,Right : -12, 40");
    RandomSound mono(1, 8, 10);
    mono.wave.MutableBytes()[4] = 255;
    EXPECT_EQ(SampleValuesText(mono.wave, 4), "(Sample Value) Left,Right : -127");
    EXPECT_EQ(SampleValuesText(mono.wave, 10), "(Sample Value) Left,Right : 0");
    RandomSound floats(2, 32, 10);
    floats.wave.SetSample(0, 3, -8192);
    floats.wave.SetSample(1, 3, 65536);
    EXPECT_EQ(SampleValuesText(floats.wave, 3), "(Sample Value) Left,Right : -0.25000, 2.00000");
}

TEST(StatusTexts, PositionsInTheThreeFormats) {
    EXPECT_EQ(PositionText(StatusFormat::kSample, 66150, 44100), "66150");
    EXPECT_EQ(PositionText(StatusFormat::kTime, 66150, 44100), "00:00:01.500");
    EXPECT_EQ(PositionText(StatusFormat::kSecond, 66150, 44100), "1.500");
    EXPECT_EQ(PositionText(StatusFormat::kSecond, 66150, 0), "0.000");
    EXPECT_EQ(SelectionText(StatusFormat::kSecond, {44100, 66150}, 44100), "1.000 - 1.500 (0.500)");
    EXPECT_EQ(SelectionText(StatusFormat::kSecond, {44100, 44100}, 44100), "");
}

}  // namespace
}  // namespace sonavel
