#include "spatial/convex_hull.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace sonavel {
namespace {

// A number from -1 to 1 that looks like chance.
double Scatter(const Vector3& p) {
    const double wave = std::sin(p.x * 127.1 + p.y * 311.7 + p.z * 74.7) * 43758.5453;
    return 2 * (wave - std::floor(wave)) - 1;
}

std::vector<Vector3> Scattered(std::span<const Vector3> points) {
    constexpr double kAlike = 5e-7;
    constexpr double kEach = 1e-9;
    std::vector<Vector3> moved;
    moved.reserve(points.size());
    for (const Vector3& p : points) {
        // Rounded, so that mirror images that differ in the last digits are still moved alike.
        const Vector3 mirrored{std::round(std::abs(p.x) * 1e6) / 1e6, std::round(p.y * 1e6) / 1e6,
                               std::round(p.z * 1e6) / 1e6};
        moved.push_back((1 + kAlike * Scatter(mirrored) + kEach * Scatter(p)) * p);
    }
    return moved;
}

class HullBuilder {
  public:
    explicit HullBuilder(std::span<const Vector3> points) : points_(Scattered(points)) {}

    std::vector<HullFace> Build() {
        if (!Begin()) return {};
        for (std::uint32_t i = 0; i < points_.size(); ++i) AddPoint(i);
        std::vector<HullFace> faces;
        for (const Face& face : faces_) faces.push_back(face.corners);
        return faces;
    }

  private:
    struct Face {
        HullFace corners;
        Vector3 normal;
        double offset;
    };

    double Height(const Face& face, std::uint32_t point) const {
        return Dot(face.normal, points_[point]) - face.offset;
    }

    void AddFace(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        const Vector3 normal = Cross(points_[b] - points_[a], points_[c] - points_[a]);
        faces_.push_back({{a, b, c}, normal, Dot(normal, points_[a])});
    }

    template <class Measure>
    std::uint32_t Greatest(const Measure& measure) const {
        std::uint32_t best = 0;
        for (std::uint32_t i = 1; i < points_.size(); ++i)
            if (measure(points_[i]) > measure(points_[best])) best = i;
        return best;
    }

    // Four points far apart.
    bool Begin() {
        if (points_.size() < 4) return false;
        const Vector3 origin = points_[0];
        const std::uint32_t b = Greatest([&](const Vector3& p) { return Length(p - origin); });
        const Vector3 along = points_[b] - origin;
        const std::uint32_t c =
            Greatest([&](const Vector3& p) { return Length(Cross(p - origin, along)); });
        const Vector3 normal = Cross(along, points_[c] - origin);
        const std::uint32_t d =
            Greatest([&](const Vector3& p) { return std::abs(Dot(p - origin, normal)); });
        const double volume = Dot(points_[d] - origin, normal);
        if (std::abs(volume) < 1e-4) return false;
        const std::uint32_t p = volume < 0 ? b : c;
        const std::uint32_t q = volume < 0 ? c : b;
        AddFace(0, p, q);
        AddFace(0, d, p);
        AddFace(p, d, q);
        AddFace(q, d, 0);
        return true;
    }

    // Takes away the faces that the point sees and spans new ones to the edge around them.
    void AddPoint(std::uint32_t point) {
        std::set<std::pair<std::uint32_t, std::uint32_t>> edges;
        const auto seen = [&](const Face& face) {
            const HullFace& f = face.corners;
            return std::find(f.begin(), f.end(), point) == f.end() && Height(face, point) > 0;
        };
        const auto firstSeen = std::partition(faces_.begin(), faces_.end(),
                                              [&](const Face& face) { return !seen(face); });
        for (auto face = firstSeen; face != faces_.end(); ++face)
            for (int side = 0; side < 3; ++side)
                edges.emplace(face->corners[side], face->corners[(side + 1) % 3]);
        faces_.erase(firstSeen, faces_.end());
        for (const auto& [from, to] : edges)
            if (!edges.contains({to, from})) AddFace(from, to, point);
    }

    std::vector<Vector3> points_;
    std::vector<Face> faces_;
};

}  // namespace

std::vector<HullFace> ConvexHull(std::span<const Vector3> points) {
    return HullBuilder(points).Build();
}

}  // namespace sonavel
