#include "spatial/scene_points.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "spatial/source_path.h"

namespace sonavel {
namespace {

constexpr int kAzimuths = 8;
constexpr int kUpNumber = 24;
constexpr double kElevationStep = 30;

double Radians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

double Degrees(double radians) {
    return radians * 180 / std::numbers::pi;
}

// Without the dust that keeps a cosine of 90 degrees from being 0: the filter takes a source for
// overhead when both x and y are 0.
float Clean(double value) {
    return std::abs(value) < 1e-9 ? 0.0f : static_cast<float>(value);
}

int NearestCoordinate(float value) {
    const double hundredths = std::round(double{value} * kHundredths);
    return static_cast<int>(std::clamp<double>(hundredths, kLeastCoordinate, kGreatestCoordinate));
}

float FromHundredths(int value) {
    return static_cast<float>(value / kHundredths);
}

}  // namespace

SourcePosition SystemPoint(int number) {
    const int nearest = NearestSystemNumber(number);
    const float radius = nearest < kSpherePoints ? kInnerRadius : kOuterRadius;
    const int place = nearest % kSpherePoints;
    if (place >= kUpNumber) return {0, 0, place == kUpNumber ? radius : -radius};
    const int level = place / kAzimuths - 1;
    const double azimuth = 360.0 / kAzimuths * (place % kAzimuths);
    const double elevation = kElevationStep * level;
    return PositionOf(PolarPosition{azimuth, elevation, radius});
}

int NearestSystemNumber(int number) {
    return std::clamp(number, 0, kSystemPoints - 1);
}

SourcePosition PositionOf(const UserPoint& point) {
    return {FromHundredths(point.x), FromHundredths(point.y), FromHundredths(point.z)};
}

UserPoint NearestUserPoint(const SourcePosition& position) {
    return {NearestCoordinate(position.x), NearestCoordinate(position.y),
            NearestCoordinate(position.z)};
}

PolarPosition PolarOf(const SourcePosition& position) {
    const double flat = std::hypot(position.x, position.y);
    const double distance = std::hypot(flat, position.z);
    if (distance == 0) return {};
    double azimuth = flat == 0 ? 0 : Degrees(std::atan2(position.x, position.y));
    if (azimuth < 0) azimuth += 360;
    if (azimuth >= 360) azimuth = 0;
    return {azimuth, Degrees(std::atan2(position.z, flat)), distance};
}

SourcePosition PositionOf(const PolarPosition& polar) {
    const double azimuth = Radians(polar.azimuth);
    const double elevation = Radians(polar.elevation);
    const double flat = polar.distance * std::cos(elevation);
    return {Clean(flat * std::sin(azimuth)), Clean(flat * std::cos(azimuth)),
            Clean(polar.distance * std::sin(elevation))};
}

SourcePosition PositionWhilePlaying(std::span<const SourcePosition> path, double share) {
    return SourcePath(path).At(static_cast<float>(std::clamp(share, 0.0, 1.0)));
}

SourcePosition PositionWhilePlaying(const Course& course, double share) {
    return SourcePath(course).At(static_cast<float>(std::clamp(share, 0.0, 1.0)));
}

}  // namespace sonavel
