// The points of the scenes: where the numbered ones stand, and how numbers, directions and
// positions turn into each other.
#include "spatial/scene_points.h"
#include "spatial/distance_law.h"

#include <cmath>

namespace sonavel {
namespace {

TEST(ScenePoints, NumbersRunRoundBothSpheresFromBelowUp) {
    const struct {
        int number;
        double azimuth, elevation, distance;
    } cases[] = {
        {0, 0, -30, 0.6},  {2, 90, -30, 0.6}, {7, 315, -30, 0.6}, {8, 0, 0, 0.6},
        {12, 180, 0, 0.6}, {14, 270, 0, 0.6}, {16, 0, 30, 0.6},   {24, 0, 90, 0.6},
        {25, 0, -90, 0.6}, {26, 0, -30, 1.8}, {35, 45, 0, 1.8},   {49, 315, 30, 1.8},
        {50, 0, 90, 1.8},  {51, 0, -90, 1.8}, {-3, 0, -30, 0.6},  {52, 0, -90, 1.8},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        const PolarPosition polar = PolarOf(SystemPoint(c.number));
        EXPECT_NEAR(polar.azimuth, c.azimuth, 1e-4);
        EXPECT_NEAR(polar.elevation, c.elevation, 1e-4);
        EXPECT_NEAR(polar.distance, c.distance, 1e-6);
    }
}

TEST(ScenePoints, TheFilterHearsTheNumberedPointsWhereTheyStand) {
    for (int number = 0; number < kSystemPoints; ++number) {
        SCOPED_TRACE(number);
        const SourcePosition position = SystemPoint(number);
        const SourceDirection heard = PositionToDirection(position);
        const PolarPosition shown = PolarOf(position);
        EXPECT_NEAR(heard.azimuth, shown.azimuth, 1e-3);
        // Straight below counts as straight above.
        EXPECT_NEAR(heard.elevation, shown.elevation == -90 ? 90 : shown.elevation, 1e-3);
        EXPECT_NEAR(DistanceGain(position), number < kSpherePoints ? 1.0 : 1 / 3.0, 1e-5);
    }
}

TEST(ScenePoints, AUsersPointsAreHundredths) {
    EXPECT_EQ(PositionOf(UserPoint{100, -50, 6}), (SourcePosition{1.0f, -0.5f, 0.06f}));
    const std::pair<SourcePosition, UserPoint> cases[] = {
        {{0.004f, 0.006f, -0.006f}, {0, 1, -1}},
        {{-9.99f, 99.99f, 0.29f}, {-999, 9999, 29}},
        {{-10.5f, 200, 0}, {-999, 9999, 0}},
    };
    for (const auto& [position, point] : cases) EXPECT_EQ(NearestUserPoint(position), point);
    for (const int value : {-999, -1, 0, 29, 57, 1013, 9999})
        EXPECT_EQ(NearestUserPoint(PositionOf(UserPoint{value, 0, value})),
                  (UserPoint{value, 0, value}));
}

TEST(ScenePoints, DirectionsAndPositionsTurnIntoEachOther) {
    const PolarPosition places[] = {{0, 0, 1},      {90, 0, 0.6},     {180, 45, 2}, {270, -20, 0.1},
                                    {359.5, 10, 5}, {44.25, -60, 30}, {0, 90, 0.6}, {0, -90, 3}};
    for (const PolarPosition& place : places) {
        SCOPED_TRACE(place.azimuth);
        const PolarPosition back = PolarOf(PositionOf(place));
        EXPECT_NEAR(back.azimuth, place.azimuth, 1e-3);
        EXPECT_NEAR(back.elevation, place.elevation, 1e-3);
        EXPECT_NEAR(back.distance, place.distance, 1e-5);
    }
    EXPECT_EQ(PolarOf({0, 0, 0}), PolarPosition{});
    EXPECT_LT(PolarOf({-1e-20f, 1, 0}).azimuth, 360);
    for (const double gain : {1.0, 0.5, 0.25, 0.01}) {
        const auto distance = static_cast<float>(DistanceLaw{}.DistanceOf(gain));
        EXPECT_NEAR(DistanceGain({0, distance, 0}), gain, 1e-6);
    }
}

TEST(ScenePoints, TheBallStaysOnThePath) {
    const SourcePosition path[] = {{0, 1, 0}, {1, 1, 0}, {1, 1, 3}};
    EXPECT_EQ(PositionWhilePlaying(path, -1), path[0]);
    EXPECT_EQ(PositionWhilePlaying(path, 0.25), path[1]);
    EXPECT_EQ(PositionWhilePlaying(path, 1.5), path[2]);
    EXPECT_EQ(PositionWhilePlaying(std::span(path).first(1), 0.5), path[0]);
}

}  // namespace
}  // namespace sonavel
