#include "spatial/convolution.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

#include "spatial/direction.h"
#include "spatial/hrir_table.h"

namespace sonavel {
namespace {

TEST(FftTest, IsTheFourierSumAtEveryEvenSize) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> value(-1, 1);
    for (const int log2Size : {2, 4, 6, 8, 10}) {
        const int size = 1 << log2Size;
        Spectrum data{};
        for (int i = 0; i < size; ++i) {
            data.real[i] = value(random);
            data.imaginary[i] = value(random);
        }
        const Spectrum input = data;
        Fft(data, log2Size);
        for (int k = 0; k < size; ++k) {
            std::complex<double> sum;
            for (int i = 0; i < size; ++i)
                sum += std::complex<double>(input.real[i], input.imaginary[i]) *
                       std::polar(1.0, -2 * std::numbers::pi * i * k / size);
            ASSERT_NEAR(data.real[k], sum.real(), 1e-4) << size << ' ' << k;
            ASSERT_NEAR(data.imaginary[k], sum.imag(), 1e-4) << size << ' ' << k;
        }
    }
}

std::vector<double> Direct(const std::vector<float>& input, int index, std::size_t frames) {
    const auto taps = HrirTable::Get().Response(index);
    std::vector<double> out(frames);
    for (std::size_t i = 0; i < frames; ++i)
        for (std::size_t k = 0; k < taps.size() && k <= i; ++k) out[i] += taps[k] * input[i - k];
    return out;
}

TEST(ConvolutionTest, OverlapSaveEqualsDirectConvolution) {
    constexpr int kBlocks = 4;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(-32768, 32767);
    std::vector<float> input(kBlocks * kBlockFrames);
    for (float& sample : input) sample = value(random);
    Spectrum left, right;
    LoadResponseSpectrum(left, 141);
    LoadResponseSpectrum(right, 159);
    const std::vector<double> wantedLeft = Direct(input, 141, input.size());
    const std::vector<double> wantedRight = Direct(input, 159, input.size());

    std::vector<float> padded(kBlockHistory);
    padded.insert(padded.end(), input.begin(), input.end());
    for (int block = 0; block < kBlocks; ++block) {
        std::array<float, 2 * kBlockFrames> out;
        const int first = block * kBlockFrames;
        ConvolveBlock(std::span<const float, kBlockInput>(padded.data() + first, kBlockInput), left,
                      right, out);
        for (int j = 0; j < kBlockFrames; ++j) {
            ASSERT_NEAR(out[2 * j], wantedLeft[first + j], 0.5);
            ASSERT_NEAR(out[2 * j + 1], wantedRight[first + j], 0.5);
        }
    }
}

double Energy(int index) {
    double sum = 0;
    for (const double tap : HrirTable::Get().Response(index)) sum += tap * tap;
    return sum;
}

// The lag, in microseconds, by which response b is most alike to response a.
double LagOf(int a, int b) {
    const auto first = HrirTable::Get().Response(a);
    const auto second = HrirTable::Get().Response(b);
    double best = -1;
    int bestLag = 0;
    for (int lag = -50; lag <= 50; ++lag) {
        double sum = 0;
        for (int i = 0; i < kHrirTaps; ++i)
            if (i + lag >= 0 && i + lag < kHrirTaps) sum += first[i] * second[i + lag];
        if (sum > best) {
            best = sum;
            bestLag = lag;
        }
    }
    return bestLag * 1e6 / 44100;
}

TEST(HrirTableTest, HoldsLeftEarResponses) {
    for (int i = 0; i < kHrirResponses; ++i) {
        EXPECT_GT(Energy(i), 0.01) << i;
        for (const double tap : HrirTable::Get().Response(i)) ASSERT_LE(std::abs(tap), 0.999939);
    }
    for (int ring = 0; ring < kHrirRings - 1; ++ring) {
        const auto at = [ring](double azimuth) {
            return kRingStart[ring] + static_cast<int>(azimuth / kAzimuthStep[ring]);
        };
        EXPECT_EQ(kRingStart[ring + 1] - kRingStart[ring],
                  static_cast<int>(360 / kAzimuthStep[ring]));
        if (ring >= 12) continue;
        EXPECT_GT(Energy(at(270)), 1.5 * Energy(at(90))) << ring;
        EXPECT_GT(LagOf(at(270), at(90)), 100) << ring;
    }
}

TEST(HrirTableTest, ArrivesAsAtASphericalHead) {
    constexpr double kRadius = 0.0875;  // metres
    constexpr double kSoundSpeed = 343;
    for (int azimuth = 10; azimuth <= 80; azimuth += 10) {
        const int farEar = DirectionToIndex(0, static_cast<float>(azimuth));
        const int nearEar = DirectionToIndex(0, static_cast<float>(360 - azimuth));
        const double angle = azimuth * std::numbers::pi / 180;
        // R. S. Woodworth's formula for the difference between the ears.
        const double wanted = kRadius / kSoundSpeed * (angle + std::sin(angle)) * 1e6;
        EXPECT_NEAR(LagOf(nearEar, farEar), wanted, 150) << azimuth;
    }
}

}  // namespace
}  // namespace sonavel
