#include "spatial/ui/mesh.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sonavel {
namespace {

constexpr std::size_t kMostVertices = 65536;
constexpr float kCoarseStep = 0.02f;
constexpr int kRefinements = 12;
constexpr float kFarthest = 2;

QVector3D DirectionOf(float polar, float turn) {
    return {std::sin(polar) * std::cos(turn), std::sin(polar) * std::sin(turn), std::cos(polar)};
}

float DistanceToSurface(const StarShape& shape, const QVector3D& direction) {
    float outside = kCoarseStep;
    while (outside < kFarthest && shape.field(shape.centre + outside * direction) < 0)
        outside += kCoarseStep;
    float inside = outside - kCoarseStep;
    for (int i = 0; i < kRefinements; ++i) {
        const float middle = (inside + outside) / 2;
        (shape.field(shape.centre + middle * direction) < 0 ? inside : outside) = middle;
    }
    return (inside + outside) / 2;
}

QVector3D NormalAt(const SurfaceField& field, const QVector3D& place) {
    constexpr float kStep = 0.002f;
    const auto slope = [&](const QVector3D& step) {
        return field(place + step) - field(place - step);
    };
    return QVector3D(slope({kStep, 0, 0}), slope({0, kStep, 0}), slope({0, 0, kStep})).normalized();
}

MeshVertex VertexOf(const StarShape& shape, const QVector3D& direction) {
    const QVector3D place = shape.centre + DistanceToSurface(shape, direction) * direction;
    return {place, NormalAt(shape.field, place), shape.colour(place)};
}

void AppendQuads(Mesh& mesh, int rings, int segments) {
    const auto index = [segments](int ring, int segment) {
        return static_cast<std::uint16_t>(ring * (segments + 1) + segment);
    };
    for (int ring = 0; ring < rings; ++ring) {
        for (int segment = 0; segment < segments; ++segment) {
            const std::uint16_t corners[] = {index(ring, segment), index(ring + 1, segment),
                                             index(ring + 1, segment + 1),
                                             index(ring, segment + 1)};
            for (const int corner : {0, 1, 2, 0, 2, 3}) mesh.indices.push_back(corners[corner]);
        }
    }
}

}  // namespace

bool Mesh::Append(const Mesh& other) {
    const std::size_t base = vertices.size();
    if (base + other.vertices.size() > kMostVertices) return false;
    vertices.insert(vertices.end(), other.vertices.begin(), other.vertices.end());
    for (const std::uint16_t index : other.indices)
        indices.push_back(static_cast<std::uint16_t>(base + index));
    return true;
}

float FieldOf(const Ellipsoid& ellipsoid, const QVector3D& place) {
    const QVector3D scaled = (place - ellipsoid.centre) / ellipsoid.radii;
    const float slope = (scaled / ellipsoid.radii).length();
    if (slope == 0)
        return -std::min({ellipsoid.radii.x(), ellipsoid.radii.y(), ellipsoid.radii.z()});
    return scaled.length() * (scaled.length() - 1) / slope;
}

float Join(float first, float second, float rounding) {
    const float overlap = std::max(rounding - std::abs(first - second), 0.0f) / rounding;
    return std::min(first, second) - overlap * overlap * rounding / 4;
}

float Carve(float first, float second, float rounding) {
    return -Join(-first, second, rounding);
}

Mesh MeshOf(const StarShape& shape) {
    constexpr float kPi = std::numbers::pi_v<float>;
    Mesh mesh;
    for (int ring = 0; ring <= shape.rings; ++ring) {
        const float polar = kPi * static_cast<float>(ring) / static_cast<float>(shape.rings);
        for (int segment = 0; segment <= shape.segments; ++segment) {
            const float turn =
                2 * kPi * static_cast<float>(segment) / static_cast<float>(shape.segments);
            mesh.vertices.push_back(VertexOf(shape, DirectionOf(polar, turn)));
        }
    }
    AppendQuads(mesh, shape.rings, shape.segments);
    return mesh;
}

}  // namespace sonavel
