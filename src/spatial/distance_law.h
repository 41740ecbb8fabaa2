// How the level of a smooth source falls with its distance.
#pragma once

namespace sonavel {

inline constexpr double kUsualLeastDistance = 0.6;  // scene units
inline constexpr double kLeastLeastDistance = 0.05;
inline constexpr double kGreatestLeastDistance = 100;
inline constexpr double kUsualFall = 6;  // dB for twice the distance, rounded as people say it
inline constexpr double kGreatestFall = 24;

struct DistanceLaw {
    double fall = kUsualFall;                    // 0 to kGreatestFall; 6 halves the level
    double leastDistance = kUsualLeastDistance;  // up to it the level is full

    bool operator==(const DistanceLaw&) const = default;

    // 1 up to the least distance, and behind it less and less.
    double GainAt(double distance) const;
    // The distance at which a source has this gain, 0 < gain <= 1; of a law without a fall the
    // least distance.
    double DistanceOf(double gain) const;
};

}  // namespace sonavel
