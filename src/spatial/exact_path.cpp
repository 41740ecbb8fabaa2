#include "spatial/exact_path.h"

#include <algorithm>
#include <utility>

namespace sonavel {

ExactPath::ExactPath(std::span<const SourcePosition> points)
    : ExactPath(Course{std::vector<SourcePosition>(points.begin(), points.end())}) {}

ExactPath::ExactPath(Course course) : course_(std::move(course)) {
    for (const SourcePosition& corner : course_.corners)
        points_.push_back({corner.x, corner.y, corner.z});
    std::vector<double> lengths{0};
    for (std::size_t i = 1; i < points_.size(); ++i)
        lengths.push_back(lengths.back() + Length(points_[i] - points_[i - 1]));
    const double total = lengths.back();
    if (total == 0) points_.resize(1);
    if (!course_.reached.empty()) return;
    course_.reached = std::move(lengths);
    for (double& length : course_.reached) length = total > 0 ? length / total : 0;
}

Vector3 ExactPath::At(double share) const {
    if (points_.size() == 1) return points_.front();
    const std::vector<double>& reached = course_.reached;
    const double at = std::clamp(course_.ShareOfRound(share), 0.0, 1.0);
    const auto behind = std::upper_bound(reached.begin() + 1, reached.end() - 1, at);
    const auto leg = static_cast<std::size_t>(behind - reached.begin()) - 1;
    const double length = *behind - reached[leg];
    const double done = length > 0 ? (at - reached[leg]) / length : 1;
    return points_[leg] + done * (points_[leg + 1] - points_[leg]);
}

}  // namespace sonavel
