#include "spatial/direction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "spatial/block_filter.h"
#include "spatial/source_path.h"

namespace sonavel {
namespace {

TEST(DirectionTest, MapsPositionsToTheResponsesOfBothEars) {
    const struct {
        SourcePosition position;
        int left, right;
    } cases[] = {
        {{0, 1, 0}, 132, 132},      {{1, 0, 0}, 141, 159},      {{-1, 0, 0}, 159, 141},
        {{0, -1, 0}, 150, 150},     {{0, 0, 3}, 360, 360},      {{0, 0, -3}, 360, 360},
        {{0, 0, 0}, 360, 360},      {{1, 0, -0.84f}, 360, 360},  // below -40 degrees
        {{0, 1, 11.5f}, 360, 360},                               // above 85 degrees
        {{0, 1, 1}, 300, 300},       // 45 rounds up to the 50 degree ring
        {{0, 1, -0.8f}, 0, 0},       // just above -40
        {{-0.05f, 1, 0}, 168, 132},  // 357 degrees reads the next ring's first response
    };
    for (const auto& c : cases) {
        const SourceDirection direction = PositionToDirection(c.position);
        EXPECT_EQ(direction.leftIndex, c.left) << c.position.x << ' ' << c.position.z;
        EXPECT_EQ(direction.rightIndex, c.right) << c.position.x << ' ' << c.position.z;
    }
}

TEST(DirectionTest, RunsOverTheEndOfARingWithoutWrapping) {
    const struct {
        float elevation, azimuth;
        int index;
    } cases[] = {{0, 356, 168}, {0, 354, 167}, {80, 350, 360}, {90, 0, 360}, {-40, 0, 0}};
    for (const auto& c : cases) EXPECT_EQ(DirectionToIndex(c.elevation, c.azimuth), c.index);
}

TEST(DirectionTest, GainFallsWithDistanceBeyondTheReference) {
    EXPECT_FLOAT_EQ(DistanceGain({0, 0.3f, 0}), 1);
    EXPECT_FLOAT_EQ(DistanceGain({1.2f, 0, 0}), 0.5f);
    EXPECT_FLOAT_EQ(DistanceGain({0, 0, 6}), 0.1f);
}

SourceDirection Facing(float azimuth, float elevation = 0) {
    return {static_cast<int>(azimuth), 0, azimuth, elevation};
}

TEST(DirectionTest, ResponsesChangeOnlyBehindTenDegrees) {
    EXPECT_TRUE(KeepsResponses(Facing(20), Facing(30)));
    EXPECT_FALSE(KeepsResponses(Facing(20), Facing(30.5f)));
    EXPECT_TRUE(KeepsResponses(Facing(355), Facing(5)));
    EXPECT_FALSE(KeepsResponses(Facing(350), Facing(10)));
    EXPECT_FALSE(KeepsResponses(Facing(20), Facing(21, 10.5f)));
}

TEST(SourcePathTest, RunsThroughItsLegsAtConstantSpeed) {
    const SourcePosition points[] = {{0, 0, 0}, {3, 0, 0}, {3, 1, 0}};
    const SourcePath path(points);
    const std::pair<float, SourcePosition> cases[] = {{0, {0, 0, 0}},
                                                      {0.5f, {2, 0, 0}},
                                                      {0.75f, {3, 0, 0}},
                                                      {0.875f, {3, 0.5f, 0}},
                                                      {1, {3, 1, 0}}};
    for (const auto& [share, wanted] : cases) EXPECT_EQ(path.At(share), wanted) << share;
    const SourcePosition still[] = {{1, 2, 3}, {1, 2, 3}};
    EXPECT_EQ(SourcePath(still).At(0.7f), (SourcePosition{1, 2, 3}));
    const SourcePosition twiceAtTheEnd[] = {{0, 0, 0}, {3, 1, 0}, {3, 1, 0}};
    EXPECT_EQ(SourcePath(twiceAtTheEnd).At(1), (SourcePosition{3, 1, 0}));
}

TEST(DirectionTest, PositionsThatAreNoNumbersAreHeardFromAbove) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const SourcePosition positions[] = {
        {kNan, 1, 0}, {0, kNan, 0}, {1, 1, kNan}, {kInfinity, 0, kInfinity}};
    for (const SourcePosition& position : positions) {
        const SourceDirection direction = PositionToDirection(position);
        EXPECT_EQ(direction.leftIndex, 360) << position.x << ' ' << position.z;
        EXPECT_EQ(direction.rightIndex, 360);
    }
    EXPECT_EQ(DistanceGain({kNan, 1, 0}), 1);
    EXPECT_EQ(DistanceGain({kInfinity, 1, 0}), 0);
}

}  // namespace
}  // namespace sonavel
