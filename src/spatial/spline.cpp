#include "spatial/spline.h"

#include <cmath>

#include "spatial/vector3.h"

namespace sonavel {
namespace {

constexpr std::size_t kLegs = 64;

// The points without those that repeat the one before them, and which of them each point is.
struct Distinct {
    std::vector<Vector3> points;
    std::vector<std::size_t> numbers;
};

Distinct WithoutRepeats(std::span<const SourcePosition> points) {
    Distinct kept;
    for (const SourcePosition& point : points) {
        const Vector3 next{point.x, point.y, point.z};
        if (kept.points.empty() || !(kept.points.back() == next)) kept.points.push_back(next);
        kept.numbers.push_back(kept.points.size() - 1);
    }
    return kept;
}

// Adds a point before the first one and one behind the last: of an open path as straight as it
// begins and ends.
void AddEnds(std::vector<Vector3>& through, CurveEnds ends) {
    const std::size_t last = through.size() - 1;
    const bool closed = ends == CurveEnds::kClosed;
    const Vector3 before = closed ? through[last - 1] : 2.0 * through[0] - through[1];
    const Vector3 behind = closed ? through[1] : 2.0 * through[last] - through[last - 1];
    through.insert(through.begin(), before);
    through.push_back(behind);
}

// What lies at `t` on the line that is at `a` at `from` and at `b` at `to`.
Vector3 OnLine(const Vector3& a, const Vector3& b, double from, double to, double t) {
    const double share = (t - from) / (to - from);
    return (1 - share) * a + share * b;
}

// The piece between the two middle ones of four points, by P. J. Barry's and R. N. Goldman's
// recursion; the knots are as far apart as the square roots of the distances.
class Piece {
  public:
    Piece(const Vector3& before, const Vector3& from, const Vector3& to, const Vector3& behind)
        : p_{before, from, to, behind} {
        for (int i = 1; i < 4; ++i)
            knots_[i] = knots_[i - 1] + std::sqrt(Length(p_[i] - p_[i - 1]));
    }

    Vector3 At(double share) const {
        const double t = knots_[1] + share * (knots_[2] - knots_[1]);
        Vector3 level[3];
        for (int i = 0; i < 3; ++i)
            level[i] = OnLine(p_[i], p_[i + 1], knots_[i], knots_[i + 1], t);
        for (int i = 0; i < 2; ++i)
            level[i] = OnLine(level[i], level[i + 1], knots_[i], knots_[i + 2], t);
        return OnLine(level[0], level[1], knots_[1], knots_[2], t);
    }

  private:
    Vector3 p_[4];
    double knots_[4] = {};
};

SourcePosition Rounded(const Vector3& point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)};
}

}  // namespace

Curve CurveThrough(std::span<const SourcePosition> points, CurveEnds ends) {
    Curve curve;
    auto [through, numbers] = WithoutRepeats(points);
    if (through.size() < 3) {
        curve.corners.assign(points.begin(), points.end());
        for (std::size_t i = 0; i < points.size(); ++i) curve.cornerOfPoint.push_back(i);
        return curve;
    }
    for (const std::size_t number : numbers) curve.cornerOfPoint.push_back(kLegs * number);
    AddEnds(through, ends);
    for (std::size_t i = 1; i + 2 < through.size(); ++i) {
        const Piece piece(through[i - 1], through[i], through[i + 1], through[i + 2]);
        for (int leg = 0; leg < static_cast<int>(kLegs); ++leg)
            curve.corners.push_back(Rounded(piece.At(static_cast<double>(leg) / kLegs)));
    }
    curve.corners.push_back(Rounded(through[through.size() - 2]));
    return curve;
}

std::vector<SourcePosition> SplineThrough(std::span<const SourcePosition> points) {
    return CurveThrough(points, CurveEnds::kOpen).corners;
}

}  // namespace sonavel
