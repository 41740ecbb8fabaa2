#include "spatial/exact_path.h"

#include <algorithm>

namespace sonavel {

ExactPath::ExactPath(std::span<const SourcePosition> points) : reached_{0} {
    for (const SourcePosition& point : points) points_.push_back({point.x, point.y, point.z});
    for (std::size_t i = 1; i < points_.size(); ++i)
        reached_.push_back(reached_.back() + Length(points_[i] - points_[i - 1]));
    const double total = reached_.back();
    if (total == 0) points_.resize(1);
    for (double& length : reached_) length = total > 0 ? length / total : 0;
}

Vector3 ExactPath::At(double share) const {
    if (points_.size() == 1) return points_.front();
    const double at = std::clamp(share, 0.0, 1.0);
    const auto behind = std::upper_bound(reached_.begin() + 1, reached_.end() - 1, at);
    const auto leg = static_cast<std::size_t>(behind - reached_.begin()) - 1;
    const double length = *behind - reached_[leg];
    const double done = length > 0 ? (at - reached_[leg]) / length : 1;
    return points_[leg] + done * (points_[leg + 1] - points_[leg]);
}

}  // namespace sonavel
