// When a source is where on its path: times, rounds, shapes to begin with, and how its level falls.
#include <cmath>

#include "document/document_fixture.h"
#include "spatial/exact_path.h"
#include "spatial/path_shapes.h"
#include "spatial/placing_times.h"
#include "spatial/scene_points.h"
#include "spatial/source_path.h"
#include "spatial/spatializer.h"

namespace sonavel::testing {
namespace {

using Times = std::vector<std::optional<double>>;
constexpr auto kAny = std::nullopt;

double Apart(const SourcePosition& a, const SourcePosition& b) {
    return std::hypot(double{a.x} - b.x, double{a.y} - b.y, double{a.z} - b.z);
}

SourcePosition Rounded(const Vector3& place) {
    return {static_cast<float>(place.x), static_cast<float>(place.y), static_cast<float>(place.z)};
}

Placing PathAt(std::vector<float> xs, Times times) {
    Placing placing{.kind = PlacingKind::kPath, .times = std::move(times)};
    for (const float x : xs) placing.points.push_back({x, 1, 0});
    return placing;
}

TEST(PathTest, PointsAreReachedAtTheirTimesAndBetweenThemAtEvenSpeed) {
    struct Case {
        const char* what;
        Placing placing;
        // In a range of ten seconds, after each of them from 0 on.
        std::vector<float> wanted;
    };
    const Case cases[] = {
        {"no times", PathAt({0, 10}, {}), {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {"one in the middle",
         PathAt({0, 2, 10}, {kAny, 8.0}),
         {0, 0.25f, 0.5f, 0.75f, 1, 1.25f, 1.5f, 1.75f, 2, 6, 10}},
        {"a late start", PathAt({0, 8}, {2.0}), {0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8}},
        {"an early end", PathAt({0, 5}, {kAny, 5.0}), {0, 1, 2, 3, 4, 5, 5, 5, 5, 5, 5}},
        {"a pause", PathAt({0, 3, 3, 4}, {kAny, 3.0, 9.0}), {0, 1, 2, 3, 3, 3, 3, 3, 3, 3, 4}},
        {"untimed points share the way",
         PathAt({0, 1, 4, 10}, {0.0, kAny, kAny, 5.0}),
         {0, 2, 4, 6, 8, 10, 10, 10, 10, 10, 10}},
        {"longer than the range",
         PathAt({0, 20}, {kAny, 20.0}),
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {"points behind the end",
         PathAt({0, 12, 99}, {kAny, 12.0}),
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(CheckTimes(c.placing)) << c.what;
        const Course course = CourseOf(c.placing, 10);
        for (int second = 0; second <= 10; ++second) {
            const SourcePosition wanted{c.wanted[second], 1, 0};
            const SourcePosition stepped = SourcePath(course).At(static_cast<float>(second) / 10);
            EXPECT_NEAR(Apart(stepped, wanted), 0, 1e-4) << c.what << ' ' << second;
            const SourcePosition exact = Rounded(ExactPath(course).At(second / 10.0));
            EXPECT_NEAR(Apart(exact, wanted), 0, 1e-5) << c.what << ' ' << second;
        }
    }
}

TEST(PathTest, ALoopLeadsBackAndBeginsAgain) {
    struct Case {
        Times times;
        double round;
        std::vector<float> wanted;
    };
    const Case cases[] = {
        {{}, 0, {0, 1, 2, 3, 4, 5, 4, 3, 2, 1, 0}},
        {{}, 5, {0, 2, 4, 4, 2, 0, 2, 4, 4, 2, 0}},
        {{}, 40, {0, 0.25f, 0.5f, 0.75f, 1, 1.25f, 1.5f, 1.75f, 2, 2.25f, 2.5f}},
        {{kAny, 1.0}, 6, {0, 5, 4, 3, 2, 1, 0, 5, 4, 3, 2}},
    };
    for (const Case& c : cases) {
        Placing placing = PathAt({0, 5}, c.times);
        placing.loop = PathLoop::kLoop;
        placing.roundSeconds = c.round;
        ASSERT_TRUE(CheckTimes(placing));
        const Course course = CourseOf(placing, 10);
        for (int second = 0; second <= 10; ++second)
            EXPECT_NEAR(ExactPath(course).At(second / 10.0).x, c.wanted[second], 1e-5)
                << c.round << ' ' << second;
    }
}

TEST(PathTest, AClosedCurveGoesOnWhereItBeganWithoutACorner) {
    Placing placing{.kind = PlacingKind::kPath,
                    .points = {{0, 1, 0}, {1, 0, 0}, {0, -1, 0}, {-1, 0, 0}},
                    .curve = PathCurve::kSpline,
                    .loop = PathLoop::kLoop};
    const ExactPath path(CourseOf(placing, 8));
    const Vector3 into = Direction(path.At(1) - path.At(0.999));
    const Vector3 outOf = Direction(path.At(0.001) - path.At(0));
    EXPECT_GT(Dot(into, outOf), 0.99);
    // All around it stays near the circle through its points.
    for (int i = 0; i < 100; ++i) EXPECT_NEAR(Length(path.At(i / 100.0)), 1, 0.12);
    placing.times = {kAny, 1.0, 4.0, 7.0};
    const ExactPath timed(CourseOf(placing, 8));
    for (const std::size_t point : {1u, 2u, 3u})
        EXPECT_NEAR(Apart(Rounded(timed.At(*placing.times[point] / 8)), placing.points[point]), 0,
                    1e-6);
}

TEST(PathTest, TimesThatCannotBeKeptAreRefused) {
    for (const Times& times : {Times{1.0, 1.0}, Times{2.0, kAny, 1.0}, Times{-1.0},
                               Times{std::nan("")}, Times{kAny, 1e300}})
        EXPECT_EQ(CheckPlacing(PathAt({0, 1, 2}, times)),
                  Failed("The times of the points have to rise."));
    Placing looped = PathAt({0, 1}, {kAny, 4.0});
    looped.loop = PathLoop::kLoop;
    EXPECT_TRUE(CheckPlacing(looped));
    looped.roundSeconds = 4;
    EXPECT_EQ(CheckPlacing(looped), Failed("A round ends before its last point is reached."));
}

TEST(PathTest, ShapesHaveTheirRadiusHeightAndTurns) {
    struct Case {
        ShapeNumbers numbers;
        std::size_t points;
        SourcePosition first, second, last;
    };
    const float step = 0.5f, across = std::sqrt(0.75f);
    const Case cases[] = {
        {{PathShape::kCircle, 2, 0.5, 1}, 13, {0, 2, 0.5f}, {1, 2 * across, 0.5f}, {0, 2, 0.5f}},
        {{PathShape::kCircle, 1, 0, -2}, 25, {0, 1, 0}, {-step, across, 0}, {0, 1, 0}},
        {{PathShape::kSpiral, 4, 3, 1},
         13,
         {0, 4, 0},
         {3.75f * step, 3.75f * across, 0.25f},
         {0, 1, 3}},
        {{PathShape::kFlyBy, 1, -0.5, 1}, 2, {-6, 1, -0.5f}, {6, 1, -0.5f}, {6, 1, -0.5f}},
        {{PathShape::kFlyBy, 3, 0, -4}, 2, {9.99f, 3, 0}, {-9.99f, 3, 0}, {-9.99f, 3, 0}},
    };
    for (const Case& c : cases) {
        const std::vector<SourcePosition> points = PointsOfShape(c.numbers);
        ASSERT_EQ(points.size(), c.points);
        EXPECT_NEAR(Apart(points.front(), c.first), 0, 1e-5);
        EXPECT_NEAR(Apart(points[1], c.second), 0, 1e-5);
        EXPECT_NEAR(Apart(points.back(), c.last), 0, 1e-5);
    }
}

TEST(PathTest, EveryShapeFitsIntoThePointList) {
    for (const PathShape shape : {PathShape::kCircle, PathShape::kSpiral, PathShape::kFlyBy})
        for (const int turns : {-1000, -20, -13, 0, 7, 20, 1000})
            for (const double radius : {0.0, 5.0, 1e9}) {
                const auto points = PointsOfShape({shape, radius, 1e9, turns});
                EXPECT_LE(points.size(), std::size_t{kMostUserPoints});
                for (const SourcePosition& point : points)
                    EXPECT_NEAR(Apart(PositionOf(NearestUserPoint(point)), point), 0, 0.01);
            }
}

TEST(PathTest, TheLevelFallsAsTheLawSays) {
    struct Case {
        DistanceLaw law;
        double distance, gain;
    };
    const Case cases[] = {{{}, 0.3, 1},           {{}, 1.2, 0.5},      {{12, 0.6}, 1.2, 0.25},
                          {{3, 1}, 4, 0.5},       {{0, 0.6}, 1000, 1}, {{6, 2}, 1.9, 1},
                          {{24, 0.5}, 1, 1. / 16}};
    for (const Case& c : cases) {
        EXPECT_NEAR(c.law.GainAt(c.distance), c.gain, 1e-12) << c.law.fall;
        if (c.gain == 1) continue;
        EXPECT_NEAR(c.law.DistanceOf(c.gain), c.distance, 1e-9) << c.law.fall;
    }
}

class PlacedPathTest : public DocumentTest {
  protected:
    // The greatest sample of the first and of the second half of a noise so placed.
    std::array<int, 2> Peaks(const Placing& placing) {
        const auto document = MakeNoise({1, 16, 8000}, 16000, 20000);
        EXPECT_TRUE(
            SpatializePlaced({*document, 0, 0, "", SpatialOutcome::kApply}, placing, listener_));
        std::array<int, 2> peaks{};
        for (std::uint32_t i = 0; i < 16000; ++i) {
            const int sample = std::abs(document->Sound().GetSample(1, i));
            int& peak = peaks[i / 8000];
            peak = std::max(peak, sample);
        }
        return peaks;
    }
    Listener listener_;
};

TEST_F(PlacedPathTest, TimesAndLawAreHeard) {
    // At the right ear near at hand in one half, far away in the other.
    Placing placing{.kind = PlacingKind::kPath, .points = {{0.6f, 0, 0}, {6, 0, 0}}};
    for (const Smoothness smoothness : {Smoothness::kStepped, Smoothness::kSmooth}) {
        placing.smoothness = smoothness;
        placing.times = {kAny, 0.05};
        EXPECT_LT(Peaks(placing)[1], 0.3 * Peaks(placing)[0]);
        placing.times = {1.95};
        const auto [first, second] = Peaks(placing);
        EXPECT_NEAR(first, second, 0.2 * first);
    }
    placing.times = {kAny, 0.05};
    placing.law = {0, 0.6};
    const auto [first, second] = Peaks(placing);
    EXPECT_NEAR(first, second, 0.2 * first);
}

}  // namespace
}  // namespace sonavel::testing
