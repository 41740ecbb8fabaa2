// A point or a direction around the listener in double precision: x to the right, y ahead, z up.
#pragma once

#include <cmath>

namespace sonavel {

struct Vector3 {
    double x = 0;
    double y = 0;
    double z = 0;

    bool operator==(const Vector3&) const = default;
};

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector3 operator-(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector3 operator*(double factor, const Vector3& a) {
    return {factor * a.x, factor * a.y, factor * a.z};
}
inline double Dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector3 Cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const Vector3& a) {
    return std::sqrt(Dot(a, a));
}
// Of a vector that has a length.
inline Vector3 Direction(const Vector3& a) {
    return (1 / Length(a)) * a;
}

}  // namespace sonavel
