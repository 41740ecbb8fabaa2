#include "spatial/spline.h"

#include <cmath>

#include "spatial/vector3.h"

namespace sonavel {
namespace {

constexpr int kLegs = 64;

std::vector<Vector3> WithoutRepeats(std::span<const SourcePosition> points) {
    std::vector<Vector3> kept;
    for (const SourcePosition& point : points) {
        const Vector3 next{point.x, point.y, point.z};
        if (kept.empty() || !(kept.back() == next)) kept.push_back(next);
    }
    return kept;
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

std::vector<SourcePosition> SplineThrough(std::span<const SourcePosition> points) {
    std::vector<Vector3> through = WithoutRepeats(points);
    if (through.size() < 3) return {points.begin(), points.end()};
    // Before the first point and behind the last the path goes on as it begins and ends.
    through.insert(through.begin(), 2.0 * through[0] - through[1]);
    through.push_back(2.0 * through.back() - through[through.size() - 2]);
    std::vector<SourcePosition> curve;
    for (std::size_t i = 1; i + 2 < through.size(); ++i) {
        const Piece piece(through[i - 1], through[i], through[i + 1], through[i + 2]);
        for (int leg = 0; leg < kLegs; ++leg)
            curve.push_back(Rounded(piece.At(static_cast<double>(leg) / kLegs)));
    }
    curve.push_back(Rounded(through[through.size() - 2]));
    return curve;
}

}  // namespace sonavel
