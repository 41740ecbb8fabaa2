#include "spatial/ui/scene_lines.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "spatial/scene_points.h"

namespace sonavel {
namespace {

constexpr int kMostRings = 6;
constexpr int kCircleParts = 96;
constexpr float kLeastReach = 1.2f;

const QVector4D kRingColour(0.45f, 0.78f, 0.78f, 0.75f);
const QVector4D kGridColour(0.55f, 0.68f, 0.72f, 0.16f);
const QVector4D kAxisColour(0.75f, 0.85f, 0.87f, 0.75f);
const QVector4D kSphereColour(0.70f, 0.80f, 0.85f, 0.22f);
const QVector4D kStemColour(0.90f, 0.92f, 0.80f, 0.45f);
const QVector4D kPathColour(1.0f, 0.82f, 0.30f, 0.95f);
const QVector4D kOtherPathColour(0.62f, 0.70f, 0.85f, 0.75f);

using Lines = std::vector<LineVertex>;

void AddLine(Lines& lines, const QVector3D& from, const QVector3D& to, const QVector4D& colour) {
    lines.push_back({from, colour});
    lines.push_back({to, colour});
}

void AddCircle(Lines& lines, float radius, float level, const QVector4D& colour) {
    const auto at = [&](int part) {
        const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(part) / kCircleParts;
        return QVector3D(radius * std::cos(angle), radius * std::sin(angle), level);
    };
    for (int part = 0; part < kCircleParts; ++part) AddLine(lines, at(part), at(part + 1), colour);
}

// Squares of half a ring's width, within the outermost ring.
void AddGrid(Lines& lines, const FloorRings& rings) {
    const float radius = rings.Radius();
    for (int i = -2 * rings.count + 1; i < 2 * rings.count; ++i) {
        const float offset = rings.step / 2 * static_cast<float>(i);
        const float half = std::sqrt(radius * radius - offset * offset);
        AddLine(lines, {offset, -half, kFloorLevel}, {offset, half, kFloorLevel}, kGridColour);
        AddLine(lines, {-half, offset, kFloorLevel}, {half, offset, kFloorLevel}, kGridColour);
    }
}

void AddAxes(Lines& lines, float radius) {
    const QVector3D middle(0, 0, kFloorLevel);
    for (const QVector3D& way : {QVector3D(1, 0, 0), QVector3D(0, 1, 0)})
        AddLine(lines, middle - radius * way, middle + radius * way, kAxisColour);
    AddLine(lines, middle, {0, 0, kAxisTop * radius}, kAxisColour);
}

void AddSphereCircles(Lines& lines) {
    for (const float radius : {kInnerRadius, kOuterRadius}) {
        for (const double elevation : {-30.0, 0.0, 30.0}) {
            const SourcePosition ahead = PositionOf(PolarPosition{0, elevation, radius});
            AddCircle(lines, ahead.y, ahead.z, kSphereColour);
        }
    }
}

void AddStems(Lines& lines, const SceneContent& content) {
    for (const ScenePoint& point : content.points) {
        const bool chosen = point.role != PointRole::kPlain;
        if (!chosen && !content.showsStems) continue;
        const QVector3D place = ToVector(point.position);
        AddLine(lines, place, {place.x(), place.y(), kFloorLevel}, kStemColour);
    }
}

void AddPath(Lines& lines, const std::vector<SourcePosition>& path, const QVector4D& colour) {
    for (std::size_t i = 1; i < path.size(); ++i)
        AddLine(lines, ToVector(path[i - 1]), ToVector(path[i]), colour);
}

float LengthOf(const SourcePosition& position) {
    return ToVector(position).length();
}

}  // namespace

float ReachOf(const SceneContent& content) {
    float reach = kLeastReach;
    for (const ScenePoint& point : content.points)
        reach = std::max(reach, LengthOf(point.position));
    for (const SourcePosition& corner : content.path) reach = std::max(reach, LengthOf(corner));
    for (const auto& path : content.otherPaths)
        for (const SourcePosition& corner : path) reach = std::max(reach, LengthOf(corner));
    return reach;
}

FloorRings RingsFor(const SceneContent& content) {
    const float reach = ReachOf(content) * 0.999f;
    FloorRings rings;
    for (const int multiple : {1, 2, 5, 10, 20, 50}) {
        rings.step = kInnerRadius * static_cast<float>(multiple);
        rings.count = static_cast<int>(std::ceil(reach / rings.step));
        if (rings.count <= kMostRings) break;
    }
    return rings;
}

SceneLines LinesOf(const SceneContent& content, const FloorRings& rings) {
    SceneLines lines;
    AddGrid(lines.thin, rings);
    for (int ring = 1; ring <= rings.count; ++ring)
        AddCircle(lines.thin, rings.step * static_cast<float>(ring), kFloorLevel, kRingColour);
    AddAxes(lines.thin, rings.Radius());
    if (content.showsSpheres) AddSphereCircles(lines.thin);
    AddStems(lines.thin, content);
    AddPath(lines.thick, content.path, kPathColour);
    for (const auto& path : content.otherPaths) AddPath(lines.thick, path, kOtherPathColour);
    return lines;
}

}  // namespace sonavel
