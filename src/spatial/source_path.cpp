#include "spatial/source_path.h"

#include <algorithm>
#include <cmath>

namespace sonavel {
namespace {

double Distance(const SourcePosition& a, const SourcePosition& b) {
    return std::hypot(double{b.x} - a.x, double{b.y} - a.y, double{b.z} - a.z);
}

SourcePosition Between(const SourcePosition& a, const SourcePosition& b, float t) {
    return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y, (1 - t) * a.z + t * b.z};
}

}  // namespace

SourcePath::SourcePath(std::span<const SourcePosition> points)
    : points_(points.begin(), points.end()) {
    double total = 0;
    for (std::size_t i = 1; i < points_.size(); ++i) total += Distance(points_[i - 1], points_[i]);
    if (total == 0) {
        points_.resize(1);
        return;
    }
    double done = 0;
    for (std::size_t i = 0; i < points_.size(); ++i) {
        if (i > 0) done += Distance(points_[i - 1], points_[i]);
        legStarts_.push_back(static_cast<float>(done / total));
    }
}

SourcePath::SourcePath(const Course& course) : SourcePath(course.corners) {
    rounds_ = {{}, {}, course.loop, course.round};
    if (!course.reached.empty()) legStarts_.assign(course.reached.begin(), course.reached.end());
}

SourcePosition SourcePath::At(float share) const {
    if (points_.size() == 1) return points_.front();
    const float t = rounds_.loop == PathLoop::kOnce
                        ? share
                        : static_cast<float>(rounds_.ShareOfRound(double{share}));
    const auto behind = std::upper_bound(legStarts_.begin() + 1, legStarts_.end() - 1, t);
    const auto leg = static_cast<std::size_t>(behind - legStarts_.begin()) - 1;
    const float start = legStarts_[leg];
    const float length = *behind - start;
    // A last leg of no length is entered at the end of the path.
    const float done = length > 0 ? (t - start) / length : 1;
    return Between(points_[leg], points_[leg + 1], done);
}

}  // namespace sonavel
