#include "spatial/placing_times.h"

#include <optional>

#include "spatial/spline.h"

namespace sonavel {
namespace {

// The corners of the way with the times of those that have one.
struct TimedCorners {
    std::vector<SourcePosition> corners;
    std::vector<std::optional<double>> times;

    void Add(const SourcePosition& corner, std::optional<double> time = {}) {
        corners.push_back(corner);
        times.push_back(time);
    }
};

std::vector<SourcePosition> PointsToPass(const Placing& placing) {
    std::vector<SourcePosition> points = placing.points;
    if (placing.loop == PathLoop::kLoop) points.push_back(points.front());
    return points;
}

Curve CurveOf(const Placing& placing) {
    const std::vector<SourcePosition> points = PointsToPass(placing);
    if (placing.curve == PathCurve::kSpline)
        return CurveThrough(
            points, placing.loop == PathLoop::kLoop ? CurveEnds::kClosed : CurveEnds::kOpen);
    Curve straight{points, {}};
    for (std::size_t i = 0; i < points.size(); ++i) straight.cornerOfPoint.push_back(i);
    return straight;
}

// A point that shares the corner of the one before it gets one of its own: the source stays there
// from the one's time to the other's.
TimedCorners WithTimes(const Curve& curve, const std::vector<std::optional<double>>& times) {
    TimedCorners timed;
    std::size_t next = 0;
    for (std::size_t point = 0; point < curve.cornerOfPoint.size(); ++point) {
        const std::size_t corner = curve.cornerOfPoint[point];
        for (; next < corner; ++next) timed.Add(curve.corners[next]);
        timed.Add(curve.corners[corner], point < times.size() ? times[point] : std::nullopt);
        next = corner + 1;
    }
    return timed;
}

// The first corner has a time then, and the last one, which is `end` unless the points take longer.
void TimeEnds(TimedCorners& timed, double end) {
    double latest = 0;
    for (const std::optional<double>& time : timed.times)
        if (time) latest = *time;
    if (!timed.times.back()) timed.times.back() = end > latest ? end : latest + 1;
    if (!timed.times.front()) timed.times.front() = 0;
    if (*timed.times.front() <= 0) return;
    timed.corners.insert(timed.corners.begin(), timed.corners.front());
    timed.times.insert(timed.times.begin(), 0.0);
}

double LegLength(const SourcePosition& a, const SourcePosition& b) {
    return Length(Vector3{b.x, b.y, b.z} - Vector3{a.x, a.y, a.z});
}

// Between two corners with times the others follow at even speed.
std::vector<double> Reached(const TimedCorners& timed) {
    std::vector<double> reached{*timed.times.front()};
    for (std::size_t from = 0; from + 1 < timed.corners.size();) {
        std::vector<double> lengths{0};
        std::size_t to = from;
        do {
            ++to;
            lengths.push_back(lengths.back() + LegLength(timed.corners[to - 1], timed.corners[to]));
        } while (!timed.times[to]);
        const double start = *timed.times[from];
        const double total = lengths.back();
        for (std::size_t i = 1; i < lengths.size(); ++i)
            reached.push_back(start +
                              (*timed.times[to] - start) * (total > 0 ? lengths[i] / total : 1));
        from = to;
    }
    return reached;
}

bool HasTimes(const Placing& placing) {
    for (const std::optional<double>& time : placing.times)
        if (time) return true;
    return false;
}

}  // namespace

std::vector<SourcePosition> PathOf(const Placing& placing) {
    return placing.points.empty() ? placing.points : CurveOf(placing).corners;
}

Course CourseOf(const Placing& placing, double rangeSeconds) {
    const bool loops = placing.loop == PathLoop::kLoop;
    const double round = loops && placing.roundSeconds > 0 ? placing.roundSeconds : rangeSeconds;
    Curve curve = CurveOf(placing);
    if (!HasTimes(placing))
        return {std::move(curve.corners), {}, placing.loop, round / rangeSeconds};
    TimedCorners timed = WithTimes(curve, placing.times);
    TimeEnds(timed, round);
    std::vector<double> reached = Reached(timed);
    // Behind its last time the source stays.
    if (reached.back() < round) {
        timed.corners.push_back(timed.corners.back());
        reached.push_back(round);
    }
    for (double& time : reached) time /= round;
    return {std::move(timed.corners), std::move(reached), placing.loop, round / rangeSeconds};
}

Outcome CheckTimes(const Placing& placing) {
    double latest = -1;
    for (const std::optional<double>& time : placing.times) {
        if (!time) continue;
        if (!(*time > latest && *time >= 0 && *time <= kGreatestPathSeconds))
            return Failed("The times of the points have to rise.");
        latest = *time;
    }
    if (placing.loop == PathLoop::kLoop && placing.roundSeconds > 0 &&
        !(placing.roundSeconds > latest))
        return Failed("A round ends before its last point is reached.");
    return Done();
}

}  // namespace sonavel
