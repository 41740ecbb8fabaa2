#include "spatial/direction.h"

#include <algorithm>
#include <cmath>

#include "spatial/hrir_table.h"

namespace sonavel {
namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr float kReferenceDistance = 0.6f;
constexpr float kLowestElevation = -40;
constexpr float kOverheadFrom = 85;

}  // namespace

SourceDirection PositionToDirection(const SourcePosition& position) {
    const double x = position.x;
    const double y = position.y;
    const double z = position.z;
    const auto angle = static_cast<float>(std::atan2(y, x) * kDegreesPerRadian);
    SourceDirection direction;
    direction.elevation =
        static_cast<float>(std::atan(z / std::sqrt(x * x + y * y)) * kDegreesPerRadian);
    // Not a number compares false and so counts as overhead.
    const bool aside = (x != 0 || y != 0) && direction.elevation > kLowestElevation &&
                       direction.elevation < kOverheadFrom;
    if (aside) {
        direction.azimuth = angle <= 90 ? 90 - angle : 450 - angle;
    } else {
        direction.azimuth = 0;
        direction.elevation = 90;
    }
    const float mirrored = direction.azimuth == 0 ? 0 : 360 - direction.azimuth;
    direction.leftIndex = DirectionToIndex(direction.elevation, direction.azimuth);
    direction.rightIndex = DirectionToIndex(direction.elevation, mirrored);
    return direction;
}

int DirectionToIndex(float elevation, float azimuth) {
    const float tens = elevation * 0.1f;
    const int ring = static_cast<int>(std::floor(tens + 0.5)) + 4;
    return kRingStart[ring] + static_cast<int>(std::floor(azimuth / kAzimuthStep[ring] + 0.5));
}

float DistanceGain(const SourcePosition& position) {
    // The order of the arguments below lets a distance that is not a number count as the reference.
    const float distance =
        std::sqrt(position.x * position.x + position.y * position.y + position.z * position.z);
    return kReferenceDistance / std::max(kReferenceDistance, distance);
}

}  // namespace sonavel
