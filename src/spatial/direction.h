// Where a source stands: from a position around the listener to the responses of both ears.
#pragma once

namespace sonavel {

// In the listener's frame, the head at the origin: x to the right, y ahead, z up, in scene units.
struct SourcePosition {
    float x = 0;
    float y = 0;
    float z = 0;

    bool operator==(const SourcePosition&) const = default;
};

struct SourceDirection {
    int leftIndex = 0;
    int rightIndex = 0;   // the mirror image's left-ear response
    float azimuth = 0;    // degrees clockwise from straight ahead, 0 <= azimuth < 360
    float elevation = 0;  // degrees

    bool operator==(const SourceDirection&) const = default;
};

// A source at or below -40 degrees, at or above 85, straight above or below the head, or at a
// position that is not a number counts as straight overhead.
SourceDirection PositionToDirection(const SourcePosition& position);

// The table index of the nearest response. `elevation` lies within -40 and 90, `azimuth` within 0
// and 360. An azimuth within half a step of 360 gives the next ring's first response; rendered
// sounds depend on it, so it does not wrap to 0.
int DirectionToIndex(float elevation, float azimuth);

// 0.6 / distance, at most 1.
float DistanceGain(const SourcePosition& position);

}  // namespace sonavel
