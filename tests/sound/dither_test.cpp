#include "sound/dither.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace sonavel {
namespace {

TEST(Dither, AllValuesOf16BitsFitAndComeBack) {
    std::vector<float> samples;
    for (int value = -32768; value <= 32767; ++value) samples.push_back(value * 0x1p-15f);
    ASSERT_TRUE(FitIn16Bits(samples));
    std::vector<std::int16_t> rounded(samples.size());
    RoundTo16Bits(samples, rounded);
    for (int value = -32768; value <= 32767; ++value)
        ASSERT_EQ(rounded[static_cast<std::size_t>(value + 32768)], value);
    for (const float other : {1.0f, 0x1p-16f, 0.1f, -1.0001f, NAN})
        EXPECT_FALSE(FitIn16Bits(std::vector<float>{other})) << other;
}

TEST(Dither, ResultsAreTheNearestOrBesideItAndStayInRange) {
    std::vector<float> samples;
    for (int i = 0; i < 200'000; ++i) samples.push_back(-1.2f + 1.2e-5f * static_cast<float>(i));
    std::vector<std::int16_t> dithered(samples.size());
    DitherTo16Bits(samples, 0, dithered);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double nearest = std::clamp(std::nearbyint(samples[i] * 32768.0), -32768.0, 32767.0);
        ASSERT_LE(std::abs(dithered[i] - nearest), 1) << samples[i];
    }
    const std::vector<float> wrong = {NAN, INFINITY, -INFINITY};
    std::vector<std::int16_t> held(3);
    DitherTo16Bits(wrong, 0, held);
    EXPECT_EQ(held, (std::vector<std::int16_t>{0, 32767, -32768}));
}

// A steady value between two steps is kept on the average, and the error is the same noise whatever
// the value is: that is what the triangle is for.
TEST(Dither, MeanAndPowerOfTheErrorDoNotDependOnTheSignal) {
    constexpr std::size_t kCount = 200'000;
    for (const double units : {0.0, 0.25, 0.5, 1000.9}) {
        std::vector<float> samples(kCount, static_cast<float>(units / 32768));
        std::vector<std::int16_t> dithered(kCount);
        DitherTo16Bits(samples, 7, dithered);
        double sum = 0, squares = 0;
        for (const std::int16_t value : dithered) {
            const double error = value - static_cast<double>(samples[0]) * 32768;
            sum += error;
            squares += error * error;
        }
        EXPECT_NEAR(sum / kCount, 0, 0.006) << units;
        EXPECT_NEAR(squares / kCount, 0.25, 0.005) << units;
    }
}

TEST(Dither, PiecesGiveTheSameAsTheWhole) {
    const std::vector<float> samples(1000, 0.3333f);
    std::vector<std::int16_t> whole(1000), pieces(1000);
    DitherTo16Bits(samples, 5, whole);
    DitherTo16Bits(std::span(samples).first(300), 5, std::span(pieces).first(300));
    DitherTo16Bits(std::span(samples).subspan(300), 305, std::span(pieces).subspan(300));
    EXPECT_EQ(pieces, whole);
    EXPECT_NE(std::ranges::count(whole, whole[0]), 1000);
}

}  // namespace
}  // namespace sonavel
