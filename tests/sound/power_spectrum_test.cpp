// The power spectrum against the sum that defines it, and what its windows promise.
#include "sound/power_spectrum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace sonavel {
namespace {

std::vector<float> Sine(unsigned frames, double bin, double amplitude) {
    std::vector<float> sine(frames);
    for (unsigned i = 0; i < frames; ++i)
        sine[i] =
            static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * bin * i / frames + 0.3));
    return sine;
}

std::vector<float> PowerOf(PowerSpectrum& spectrum, const std::vector<float>& frames) {
    std::vector<float> power(spectrum.Bins());
    spectrum.Compute(frames, power);
    return power;
}

double Decibels(double power) {
    return 10 * std::log10(power);
}

TEST(PowerSpectrumTest, ASineOfFullScaleHasThePowerOneAtItsBinForEveryWindow) {
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2)
        for (const WindowShape shape : {WindowShape::kHann, WindowShape::kBlackmanHarris}) {
            PowerSpectrum spectrum(frames, shape);
            for (const unsigned bin : {frames / 16, frames / 4 + 3, frames / 2 - 20}) {
                const auto power = PowerOf(spectrum, Sine(frames, bin, 1));
                EXPECT_NEAR(power[bin], 1, 1e-3) << frames << ' ' << bin;
                EXPECT_LT(Decibels(power[bin - 8] + 1e-20), -80) << frames << ' ' << bin;
            }
        }
}

std::vector<float> Noise(unsigned frames) {
    std::vector<float> noise(frames);
    std::uint32_t state = 1;
    for (float& value : noise) {
        state = state * 1664525u + 1013904223u;
        value = static_cast<float>(state >> 8) / 8388608.0F - 1;
    }
    return noise;
}

// Of the frames under a Hann window.
double PowerByDefinition(const std::vector<float>& frames, unsigned bin) {
    const auto count = static_cast<unsigned>(frames.size());
    std::complex<double> sum = 0;
    for (unsigned i = 0; i < count; ++i) {
        const double turn = 2 * std::numbers::pi * i / count;
        const double place = 2 * std::numbers::pi * (std::uint64_t{i} * bin % count) / count;
        sum += std::polar(frames[i] * (0.5 - 0.5 * std::cos(turn)), -place);
    }
    return std::norm(sum) / (count / 4.0 * count / 4.0);
}

// All bins of the small windows, and of the others as many from both ends and between.
TEST(PowerSpectrumTest, EqualsTheDefinitionOfTheTransform) {
    for (unsigned frames = kLeastSpectrumWindow; frames <= kGreatestSpectrumWindow; frames *= 2) {
        const auto noise = Noise(frames);
        PowerSpectrum spectrum(frames, WindowShape::kHann);
        const auto power = PowerOf(spectrum, noise);
        const unsigned last = frames / 2, step = std::max(frames / 512 * 12, 1U);
        for (unsigned bin = 0; bin <= last; bin += bin < 20 || bin + 20 > last ? 1 : step) {
            const double expected = PowerByDefinition(noise, bin);
            EXPECT_NEAR(power[bin], expected, 1e-5 * (expected + 1e-3)) << frames << ' ' << bin;
        }
    }
}

TEST(PowerSpectrumTest, BlackmanHarrisKeepsAQuietToneApartFromALoudOne) {
    constexpr unsigned kFrames = 2048;
    PowerSpectrum hann(kFrames, WindowShape::kHann), harris(kFrames, WindowShape::kBlackmanHarris);
    const auto loud = Sine(kFrames, 400.5, 1);
    EXPECT_GT(Decibels(PowerOf(hann, loud)[410]), -80);
    EXPECT_LT(Decibels(PowerOf(harris, loud)[410]), -90);
}

}  // namespace
}  // namespace sonavel
