#include "spatial/hrir_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "spatial/direction.h"

namespace sonavel {
namespace {

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
