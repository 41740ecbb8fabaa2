// Sums taken in stretches against sums taken one by one.
#include "effects/running_sum.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sonavel::testing {
namespace {

struct SumCase {
    float start;
    double step;
};

// Through zero, over many binades, up to where a step is lost, midway between two floats, and with
// steps that double precision rounds too.
const SumCase kCases[] = {{0, 0.0142475827664399},
                          {0, 0.28495165532879},
                          {100, -200.0f / 123457},
                          {-100, 170.0f / 99991},
                          {12, 0.0f},
                          {0, 1e-7},
                          {1, 0x1.8p-24},
                          {1, 0x1p-24},
                          {1.5f, -0x1.8p-24},
                          {16777216, 1},
                          {16777210, 0.75},
                          {3, -1e-9},
                          {-0.5f, 1.0 / 3},
                          {1e-39f, 1e-41},
                          {5, 0x1.000000000001p-25},
                          {1e7f, -0.50000000000001},
                          // Its steps end midway between floats from the first one behind 2 on.
                          {0x1.fffffep0f, 0x1.8p-22}};

TEST(RunningSumTest, EveryValueIsTheOneOfSingleSteps) {
    constexpr std::size_t kSteps = 300000;
    for (const SumCase& sum : kCases) {
        std::vector<float> wanted(kSteps), got(kSteps);
        float value = sum.start;
        for (float& next : wanted) {
            next = value;
            value = static_cast<float>(value + sum.step);
        }
        RunningSum running(sum.start, sum.step);
        for (std::size_t done = 0; done < kSteps; done += 4093)
            running.Take(std::span(got).subspan(done, std::min<std::size_t>(4093, kSteps - done)));
        EXPECT_EQ(got, wanted) << sum.start << " + n * " << sum.step;
        EXPECT_EQ(running.Value(), value);
        RunningSum skipping(sum.start, sum.step);
        skipping.Skip(kSteps);
        EXPECT_EQ(skipping.Value(), value) << sum.start << " + n * " << sum.step;
    }
}

TEST(RunningSumTest, PiecesBeginWhereOneRunWouldBe) {
    const auto sums = SumsAtPieces({0, 0.01}, 10001, 1000);
    ASSERT_EQ(sums.size(), 11u);
    RunningSum sum(0, 0.01);
    sum.Skip(10000);
    EXPECT_EQ(sums[10].Value(), sum.Value());
    EXPECT_EQ(sums[0].Value(), 0);
}

}  // namespace
}  // namespace sonavel::testing
