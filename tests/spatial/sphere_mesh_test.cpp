#include "spatial/sphere_mesh.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "spatial/convex_hull.h"
#include "spatial/measured_responses.h"
#include "spatial/response_set.h"
#include "spatial/spline.h"

namespace sonavel {
namespace {

std::vector<Vector3> TableDirections() {
    std::vector<Vector3> directions;
    for (const MeasuredDirection& d : TableResponses().directions)
        directions.push_back(VectorOf(d.azimuth, d.elevation));
    return directions;
}

TEST(ConvexHullTest, CoversTheSphereOnceWithEveryPointACorner) {
    std::vector<Vector3> points = TableDirections();
    points.push_back({0, 0, -1});
    const std::vector<HullFace> faces = ConvexHull(points);
    ASSERT_EQ(faces.size(), 2 * points.size() - 4);
    std::map<std::pair<std::uint32_t, std::uint32_t>, int> edges;
    for (const HullFace& face : faces) {
        const Vector3 &a = points[face[0]], &b = points[face[1]], &c = points[face[2]];
        EXPECT_GT(Dot(a, Cross(b, c)), 0);
        for (int i = 0; i < 3; ++i) ++edges[{face[i], face[(i + 1) % 3]}];
    }
    for (const auto& [edge, times] : edges) {
        EXPECT_EQ(times, 1);
        EXPECT_TRUE(edges.contains({edge.second, edge.first}));
    }
}

TEST(ConvexHullTest, PointsThatSpanNothingHaveNone) {
    const Vector3 ring[] = {{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}};
    EXPECT_TRUE(ConvexHull(std::span(ring).first(3)).empty());
    EXPECT_TRUE(ConvexHull(ring).empty());
}

std::map<std::uint32_t, double> SharesOf(const SphereBlend& blend) {
    std::map<std::uint32_t, double> shares;
    for (int i = 0; i < 3; ++i)
        if (blend.shares[i] > 1e-6) shares[blend.corners[i]] += blend.shares[i];
    return shares;
}

TEST(SphereMeshTest, SharesNameTheDirectionAndGlide) {
    std::vector<Vector3> points = TableDirections();
    points.push_back({0, 0, -1});
    const SphereMesh mesh(points);
    std::size_t nearby = 0;
    for (std::uint32_t i = 0; i < points.size(); ++i)
        EXPECT_NEAR(SharesOf(mesh.Around(points[i], nearby))[i], 1, 1e-6) << i;
    std::map<std::uint32_t, double> before;
    for (double azimuth = -1; azimuth < 361; azimuth += 0.05) {
        const double elevation = azimuth / 2 - 90;
        std::map<std::uint32_t, double> now =
            SharesOf(mesh.Around(VectorOf(azimuth, elevation), nearby));
        double sum = 0;
        Vector3 meant;
        for (const auto& [corner, share] : now) {
            sum += share;
            meant = meant + share * points[corner];
            // A share as large as this does not come or go at once.
            if (azimuth > -1) {
                EXPECT_NEAR(share, before[corner], 0.02) << azimuth;
            }
        }
        EXPECT_NEAR(sum, 1, 1e-5);
        EXPECT_GT(Dot(Direction(meant), VectorOf(azimuth, elevation)), 0.9999) << azimuth;
        before = now;
    }
}

// Straight below, where nothing was measured.
TEST(SphereMeshTest, TheGreatestGapOfTheTableIsBelowItsLowestRing) {
    EXPECT_NEAR(GreatestGap(TableResponses()), 50, 0.01);
}

TEST(SphereMeshTest, SmallTrianglesGlideToo) {
    const SphereMesh mesh(TableDirections());
    std::size_t nearby = 0;
    std::map<FinePlace, double> before;
    for (double azimuth = 0; azimuth < 360; azimuth += 0.02) {
        const FineBlend fine = Refine(mesh.Around(VectorOf(azimuth, azimuth / 4), nearby));
        std::map<FinePlace, double> now;
        for (int i = 0; i < 3; ++i) now[fine.places[i]] += fine.shares[i];
        for (const auto& [place, share] : now) {
            EXPECT_EQ(place.eighths[0] + place.eighths[1] + place.eighths[2], 8);
            if (azimuth > 0) {
                EXPECT_NEAR(share, before[place], 0.1) << azimuth;
            }
        }
        before = now;
    }
}

TEST(SplineTest, RunsThroughItsPointsWithoutCorners) {
    const SourcePosition points[] = {{1, 0, 0}, {0, 1, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 2}};
    const std::vector<SourcePosition> curve = SplineThrough(points);
    ASSERT_EQ(curve.size(), 3u * 64 + 1);
    const SourcePosition through[] = {points[0], points[1], points[3], points[4]};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(curve[64 * i].x, through[i].x, 1e-6);
        EXPECT_NEAR(curve[64 * i].y, through[i].y, 1e-6);
        EXPECT_NEAR(curve[64 * i].z, through[i].z, 1e-6);
    }
    for (std::size_t i = 1; i + 1 < curve.size(); ++i) {
        const auto leg = [&](std::size_t at) {
            return Direction(Vector3{curve[at + 1].x - curve[at].x * 1.0,
                                     curve[at + 1].y - curve[at].y * 1.0,
                                     curve[at + 1].z - curve[at].z * 1.0});
        };
        EXPECT_GT(Dot(leg(i - 1), leg(i)), 0.99) << i;
    }
    EXPECT_EQ(SplineThrough(std::span(points).first(2)).size(), 2u);
    EXPECT_EQ(SplineThrough(std::span(points).first(3)).size(), 3u);
}

}  // namespace
}  // namespace sonavel
