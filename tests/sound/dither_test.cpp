#include "sound/dither.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "sound/float_rounding.h"

namespace sonavel {
namespace {

std::vector<std::int16_t> Rounded(const std::vector<float>& samples) {
    std::vector<std::int16_t> results(samples.size());
    FloatRounder().Take<WordSample>(samples, results);
    return results;
}

TEST(Dither, AllValuesOf16BitsFitAndComeBack) {
    std::vector<float> samples;
    for (int value = -32768; value <= 32767; ++value) samples.push_back(value * 0x1p-15f);
    ASSERT_TRUE((SamplesFit<FloatSample, WordSample>(samples)));
    const std::vector<std::int16_t> rounded = Rounded(samples);
    for (int value = -32768; value <= 32767; ++value)
        ASSERT_EQ(rounded[static_cast<std::size_t>(value + 32768)], value);
    for (const float other : {1.0f, 0x1p-16f, 0.1f, -1.0001f, NAN})
        EXPECT_FALSE((SamplesFit<FloatSample, WordSample>(std::vector<float>{other}))) << other;
}

TEST(Dither, ResultsAreTheNearestOrBesideItAndStayInRange) {
    std::vector<float> samples = {NAN, INFINITY, -INFINITY};
    for (int i = 0; i < 200'000; ++i) samples.push_back(-1.2f + 1.2e-5f * static_cast<float>(i));
    const std::vector<std::int16_t> dithered = Rounded(samples);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const float share = std::isfinite(samples[i]) ? samples[i] : 0;
        const double nearest = std::clamp(std::nearbyint(share * 32768.0), -32768.0, 32767.0);
        ASSERT_LE(std::abs(dithered[i] - nearest), 1) << samples[i];
    }
}

// A steady value between two steps is kept on the average, and the error is the same noise whatever
// the value is: that is what the triangle is for.
TEST(Dither, MeanAndPowerOfTheErrorDoNotDependOnTheSignal) {
    constexpr std::size_t kCount = 200'000;
    for (const double units : {0.1, 0.25, 0.5, 1000.9}) {
        const std::vector<float> samples(kCount, static_cast<float>(units / 32768));
        double sum = 0, squares = 0;
        for (const std::int16_t value : Rounded(samples)) {
            const double error = value - static_cast<double>(samples[0]) * 32768;
            sum += error;
            squares += error * error;
        }
        EXPECT_NEAR(sum / kCount, 0, 0.006) << units;
        EXPECT_NEAR(squares / kCount, 0.25, 0.005) << units;
    }
}

// Also where what comes first would need no noise.
TEST(Dither, PiecesGiveTheSameAsTheWhole) {
    std::vector<float> samples(1000, 0.25f);
    std::fill(samples.begin() + 700, samples.end(), 0.3333f);
    for (const std::size_t piece : {1u, 300u, 700u, 999u}) {
        SCOPED_TRACE(piece);
        std::vector<std::uint8_t> bytes(samples.size());
        std::vector<std::int16_t> words(samples.size());
        FloatRounder byteRounder, wordRounder;
        for (std::size_t from = 0; from < samples.size(); from += piece) {
            const std::size_t count = std::min(piece, samples.size() - from);
            const auto next = std::span<const float>(samples).subspan(from, count);
            byteRounder.Take<ByteSample>(next, std::span(bytes).first(from + count));
            wordRounder.Take<WordSample>(next, std::span(words).first(from + count));
            EXPECT_EQ(wordRounder.AllFit(), from + count <= 700);
        }
        EXPECT_EQ(words, Rounded(samples));
        std::vector<std::uint8_t> allBytes(samples.size());
        FloatRounder().Take<ByteSample>(samples, allBytes);
        EXPECT_EQ(bytes, allBytes);
    }
}

}  // namespace
}  // namespace sonavel
