// How a source is placed: at a point or along a path, in the steps of the table or smoothly.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "spatial/block_renderer.h"
#include "spatial/course.h"
#include "spatial/distance_law.h"
#include "spatial/listener.h"

namespace sonavel {

enum class PlacingKind { kPoint, kPath };
enum class PathCurve { kStraight, kSpline };
// kStepped: the nearest response of the table, changed every ten degrees. kSmooth: the listener's
// responses, blended.
enum class Smoothness { kStepped, kSmooth };
enum class Doppler { kOff, kOn };

inline constexpr double kLeastMetresPerUnit = 0.001;
inline constexpr double kGreatestMetresPerUnit = 1000;

struct Placing {
    PlacingKind kind = PlacingKind::kPoint;
    std::vector<SourcePosition> points{};  // at least one
    PathCurve curve = PathCurve::kStraight;
    Smoothness smoothness = Smoothness::kStepped;
    Doppler doppler = Doppler::kOff;  // of smooth sources alone
    double metresPerUnit = 1;
    // When a path reaches its points, in seconds of the range, or of the round when it loops; fewer
    // than points, or nothing for a point: as the speed between those with a time gives it. Rising.
    std::vector<std::optional<double>> times{};
    // A loop leads back to its first point, and begins again after a round; 0: one round in the
    // range.
    PathLoop loop = PathLoop::kOnce;
    double roundSeconds = 0;
    DistanceLaw law{};  // of smooth sources alone

    bool operator==(const Placing&) const = default;
};

// Where it passes: its points, or the curve through them.
std::vector<SourcePosition> PathOf(const Placing& placing);
// Where it is when, in a range of that many seconds.
Course CourseOf(const Placing& placing, double rangeSeconds);

// Why such a source cannot be heard; done when it can.
Outcome CheckPlacing(const Placing& placing);

// What renders the range so placed; the sound must outlive it. Fails as CheckPlacing() does, and
// without memory.
Result<std::unique_ptr<const BlockRenderer>> MakeRenderer(const Placing& placing,
                                                          const RangeInput& input,
                                                          Listener& listener);

}  // namespace sonavel
