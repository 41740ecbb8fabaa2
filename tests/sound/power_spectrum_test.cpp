// The power spectrum against the sum that defines it, and what its windows promise.
#include "sound/power_spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

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

TEST(PowerSpectrumTest, EqualsTheDefinitionOfTheTransform) {
    constexpr unsigned kFrames = 512;
    std::vector<float> noise(kFrames);
    std::uint32_t state = 1;
    for (float& value : noise) {
        state = state * 1664525u + 1013904223u;
        value = static_cast<float>(state >> 8) / 8388608.0F - 1;
    }
    PowerSpectrum spectrum(kFrames, WindowShape::kHann);
    const auto power = PowerOf(spectrum, noise);
    for (unsigned bin = 0; bin <= kFrames / 2; ++bin) {
        std::complex<double> sum = 0;
        for (unsigned i = 0; i < kFrames; ++i) {
            const double turn = 2 * std::numbers::pi * i / kFrames;
            sum += std::polar(noise[i] * (0.5 - 0.5 * std::cos(turn)), -turn * bin);
        }
        EXPECT_NEAR(power[bin], std::norm(sum) / (kFrames / 4.0 * kFrames / 4.0), 1e-5) << bin;
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
