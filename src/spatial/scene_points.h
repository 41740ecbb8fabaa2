// Points of the 3D scenes: the fixed numbered points of the system scene, the user's points as
// positions, directions in degrees, and where a source is while its sound plays.
#pragma once

#include <span>

#include "spatial/course.h"
#include "spatial/presets.h"

namespace sonavel {

inline constexpr float kInnerRadius = 0.6f;  // points 0 to 25
inline constexpr float kOuterRadius = 1.8f;  // points 26 to 51
inline constexpr int kSpherePoints = 26;
inline constexpr int kSystemPoints = 2 * kSpherePoints;

// Both spheres are numbered alike: eight azimuths, clockwise from straight ahead, at the elevations
// -30, 0 and 30 degrees, then straight up, then straight below. A number outside 0 to 51 stands for
// the nearest one.
SourcePosition SystemPoint(int number);
int NearestSystemNumber(int number);

// People read and type lengths in hundredths of a scene unit.
inline constexpr double kHundredths = 100;
inline constexpr int kLeastCoordinate = -999;
inline constexpr int kGreatestCoordinate = 9999;
// As many as a preset gives back.
inline constexpr int kMostUserPoints = 166;

SourcePosition PositionOf(const UserPoint& point);
// To the nearest hundredth, within the range of a user point's coordinates.
UserPoint NearestUserPoint(const SourcePosition& position);

// As a person names a place, whatever response it is heard with.
struct PolarPosition {
    double azimuth = 0;    // degrees clockwise from straight ahead, 0 <= azimuth < 360
    double elevation = 0;  // degrees, -90 to 90
    double distance = 0;   // scene units

    bool operator==(const PolarPosition&) const = default;
};

// Straight above, straight below and in the head the azimuth is 0.
PolarPosition PolarOf(const SourcePosition& position);
SourcePosition PositionOf(const PolarPosition& polar);

// Where on the path a source is when this share of its sound has played, 0 to 1; shares outside
// count as the nearest. At least one point.
SourcePosition PositionWhilePlaying(std::span<const SourcePosition> path, double share);
SourcePosition PositionWhilePlaying(const Course& course, double share);

}  // namespace sonavel
