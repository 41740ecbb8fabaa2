// The triangles between directions on a sphere: which three of them lie nearest around any
// direction, and how much of each.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "spatial/vector3.h"

namespace sonavel {

// Three directions by their numbers, and shares of at least 0 that sum up to 1. The shares change
// without a step while a direction moves.
struct SphereBlend {
    std::array<std::uint32_t, 3> corners{};
    std::array<double, 3> shares{};

    bool operator==(const SphereBlend&) const = default;
};

class SphereMesh {
  public:
    // Of directions of length 1, no two of them the same. Fewer than four, or all in one plane,
    // give no triangles.
    explicit SphereMesh(std::span<const Vector3> directions);

    bool HasTriangles() const { return !triangles_.empty(); }
    // `direction` has length 1. `nearby`: the triangle found last, to begin with 0; of a direction
    // that moves it is mostly the same again. To be called with triangles only.
    SphereBlend Around(const Vector3& direction, std::size_t& nearby) const;
    // How far the place farthest from all directions is from the nearest of them, in degrees.
    double GreatestGap() const;

  private:
    struct Triangle {
        std::array<std::uint32_t, 3> corners;
        std::array<Vector3, 3> normals;  // of the planes of its sides; their products are shares
    };
    void Add(const std::array<std::uint32_t, 3>& corners);
    std::array<double, 3> SharesIn(const Triangle& triangle, const Vector3& direction) const;
    std::size_t Find(const Vector3& direction) const;

    std::vector<Vector3> directions_;
    std::vector<Triangle> triangles_;
};

}  // namespace sonavel
