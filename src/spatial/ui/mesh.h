// Triangle meshes made by formula: surfaces of smoothly joined ellipsoids.
#pragma once

#include <QVector3D>
#include <cstdint>
#include <functional>
#include <vector>

namespace sonavel {

struct MeshVertex {
    QVector3D position;
    QVector3D normal;
    QVector3D colour;
};

struct Mesh {
    std::vector<MeshVertex> vertices;
    std::vector<std::uint16_t> indices;  // three a triangle

    // False when there would be more vertices than an index can name.
    bool Append(const Mesh& other);
};

// About how far outside the surface a place is; negative inside.
using SurfaceField = std::function<float(const QVector3D& place)>;
using SurfaceColour = std::function<QVector3D(const QVector3D& place)>;

struct Ellipsoid {
    QVector3D centre;
    QVector3D radii;
};

float FieldOf(const Ellipsoid& ellipsoid, const QVector3D& place);
// The two surfaces joined, or the first without the second, with a rounding of that radius.
float Join(float first, float second, float rounding);
float Carve(float first, float second, float rounding);

struct StarShape {
    QVector3D centre;  // from here every place of the surface is in sight
    int rings = 0;
    int segments = 0;
    SurfaceField field;
    SurfaceColour colour;
};
Mesh MeshOf(const StarShape& shape);

}  // namespace sonavel
