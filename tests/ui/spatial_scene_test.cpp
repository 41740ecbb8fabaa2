// The 3D scene without a display: the camera, picking and dragging, the floor's rings, the
// listener.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "spatial/scene_points.h"
#include "spatial/ui/listener_model.h"
#include "spatial/ui/scene_balls.h"
#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_labels.h"
#include "spatial/ui/scene_lines.h"
#include "ui/view_fixture.h"

namespace sonavel {
namespace {

SceneCamera Camera(SceneCamera::View view) {
    SceneCamera camera;
    camera.SetViewport({600, 400});
    camera.Look(view);
    camera.Fit(2);
    return camera;
}

ScenePoint PointNear(float x, float y, float z) {
    return {{x, y, z}, 0, PointRole::kPlain};
}

TEST(SpatialScene, EachViewShowsTheAxesWhereAPersonExpectsThem) {
    struct Case {
        SceneCamera::View view;
        QVector3D right, up;  // of the window, in the scene
    };
    const Case cases[] = {
        {SceneCamera::View::kFront, {-1, 0, 0}, {0, 0, 1}},
        {SceneCamera::View::kSide, {0, 1, 0}, {0, 0, 1}},
        {SceneCamera::View::kTop, {1, 0, 0}, {0, 1, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.view));
        const SceneCamera camera = Camera(c.view);
        const QVector3D middle(0, 0, 0);
        const QPointF origin = *camera.Project(middle);
        EXPECT_NEAR(origin.x(), 300, 0.01);
        EXPECT_NEAR(origin.y(), 200, 0.01);
        const QPointF right = *camera.Project(middle + c.right) - origin;
        const QPointF up = *camera.Project(middle + c.up) - origin;
        EXPECT_GT(right.x(), 20);
        EXPECT_NEAR(right.y(), 0, 0.01);
        EXPECT_LT(up.y(), -20);
        EXPECT_NEAR(up.x(), 0, 0.01);
    }
    const SceneCamera behind = Camera(SceneCamera::View::kBehind);
    EXPECT_GT(behind.Project({1, 0, 0})->x(), behind.Project({-1, 0, 0})->x());
    EXPECT_FALSE(behind.Project(behind.Eye() - behind.Forward()));
}

TEST(SpatialScene, ARayThroughAPixelMeetsWhatIsSeenThere) {
    SceneCamera camera = Camera(SceneCamera::View::kBehind);
    camera.Orbit({37, -12});
    camera.Zoom(1.5);
    for (const QVector3D& place : {QVector3D(0.5f, -1, 0.3f), QVector3D(-1.2f, 0.7f, -0.6f)}) {
        const SceneCamera::Ray ray = camera.RayThrough(*camera.Project(place));
        const float along = QVector3D::dotProduct(place - ray.origin, ray.direction);
        EXPECT_LT((ray.origin + along * ray.direction - place).length(), 1e-3f);
    }
}

TEST(SpatialScene, OrbitAndZoomStayWithinBounds) {
    SceneCamera camera = Camera(SceneCamera::View::kBehind);
    camera.Orbit({0, 10000});
    EXPECT_EQ(camera.ElevationDegrees(), 90);
    const float before = camera.Distance();
    camera.Zoom(2);
    EXPECT_LT(camera.Distance(), before);
    camera.Zoom(1000);
    EXPECT_GT(camera.Distance(), 0.5f);
    camera.Zoom(-1000);
    EXPECT_LT(camera.Distance(), 1000);
}

TEST(SpatialScene, FittingBringsEveryPointIntoTheWindow) {
    SceneCamera camera;
    for (const QSizeF& size : {QSizeF(600, 400), QSizeF(300, 700)}) {
        camera.SetViewport(size);
        camera.Fit(2.1f);
        for (int number = 0; number < kSystemPoints; ++number) {
            const auto seen = camera.Project(ToVector(SystemPoint(number)));
            ASSERT_TRUE(seen);
            EXPECT_TRUE(QRectF(QPointF(), size).contains(*seen)) << number;
        }
    }
}

TEST(SpatialScene, LabelsLieInTheWindowAndNeverOnEachOther) {
    TestApplication();
    SceneContent content;
    for (int number = 0; number < kSystemPoints; ++number)
        content.points.push_back(
            {SystemPoint(number), number, number == 50 ? PointRole::kSelected : PointRole::kPlain});
    const FloorRings rings = RingsFor(content);
    using enum SceneCamera::View;
    for (const SceneCamera::View view : {kBehind, kFront, kSide, kTop}) {
        SCOPED_TRACE(static_cast<int>(view));
        SceneCamera camera;
        camera.SetViewport({560, 500});
        camera.Look(view);
        camera.Fit(1.16f * 1.8f);
        const std::vector<SceneLabel> labels = LabelsOf(camera, content, rings);
        ASSERT_GT(labels.size(), 20u);
        EXPECT_EQ(labels[0].text, "50");
        for (std::size_t i = 0; i < labels.size(); ++i) {
            EXPECT_TRUE(QRectF(0, 0, 560, 500).contains(labels[i].place)) << i;
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_FALSE(labels[i].place.intersects(labels[j].place))
                    << labels[i].text.toStdString() << ' ' << labels[j].text.toStdString();
        }
    }
}

TEST(SpatialScene, AClickMeansTheBallUnderItAndTheNearerOfTwo) {
    const SceneCamera camera = Camera(SceneCamera::View::kFront);
    const std::vector<ScenePoint> points = {PointNear(0, -1, 0), PointNear(0, 1, 0),
                                            PointNear(1, 0, 0)};
    const auto at = [&](float x, float z, double aside) {
        return PointAt(points, camera, *camera.Project({x, 0, z}) + QPointF(aside, 0));
    };
    EXPECT_EQ(PointAt(points, camera, *camera.Project({0, 1, 0})), 1);
    EXPECT_EQ(at(1, 0, 0), 2);
    EXPECT_EQ(at(1, 0, 12), 2);
    EXPECT_EQ(at(1, 0, 40), std::nullopt);
    EXPECT_EQ(at(0.5f, 0.9f, 0), std::nullopt);
}

TEST(SpatialScene, ADragKeepsTheLevelOrTheUprightPlane) {
    const QVector3D from(0.4f, 0.9f, 0.25f);
    const QPointF way(31, -22);
    struct Case {
        SceneCamera::View view;
        DragMode mode;
        bool x, y, z;  // may change
    };
    const Case cases[] = {
        {SceneCamera::View::kBehind, DragMode::kInPlane, true, true, false},
        {SceneCamera::View::kTop, DragMode::kInPlane, true, true, false},
        {SceneCamera::View::kFront, DragMode::kInPlane, true, false, true},
        {SceneCamera::View::kSide, DragMode::kInPlane, false, true, true},
        {SceneCamera::View::kBehind, DragMode::kHeight, false, false, true},
        {SceneCamera::View::kSide, DragMode::kHeight, false, false, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.view));
        const SceneCamera camera = Camera(c.view);
        const QPointF pixel = *camera.Project(from) + way;
        const QVector3D to = DraggedTo(camera, from, pixel, c.mode);
        EXPECT_EQ(std::abs(to.x() - from.x()) > 1e-3f, c.x);
        EXPECT_EQ(std::abs(to.y() - from.y()) > 1e-3f, c.y);
        EXPECT_EQ(std::abs(to.z() - from.z()) > 1e-3f, c.z);
        if (c.mode == DragMode::kHeight) continue;
        const QPointF seen = *camera.Project(to);
        EXPECT_NEAR(seen.x(), pixel.x(), 0.1);
        EXPECT_NEAR(seen.y(), pixel.y(), 0.1);
    }
    // Above the horizon there is no level to drag on.
    const SceneCamera behind = Camera(SceneCamera::View::kBehind);
    EXPECT_EQ(DraggedTo(behind, from, {300, -5000}, DragMode::kInPlane), from);
}

TEST(SpatialScene, RingsStandAtMultiplesOfTheReferenceDistance) {
    struct Case {
        float reach;
        float step;
        int count;
    };
    for (const Case& c : {Case{0.1f, 0.6f, 2}, Case{1.8f, 0.6f, 3}, Case{3.7f, 1.2f, 4},
                          Case{9.0f, 3, 3}, Case{99, 30, 4}}) {
        SceneContent content;
        content.points = {PointNear(0, c.reach, 0)};
        const FloorRings rings = RingsFor(content);
        EXPECT_NEAR(rings.step, c.step, 1e-4) << c.reach;
        EXPECT_EQ(rings.count, c.count) << c.reach;
        for (const LineVertex& vertex : LinesOf(content, rings).thin)
            ASSERT_TRUE(std::isfinite(vertex.position.lengthSquared()));
    }
}

TEST(SpatialScene, TheListenersSurfaceIsClosedAndLooksOutward) {
    const Mesh model = ListenerModel();
    QVector3D low(9, 9, 9);
    QVector3D high(-9, -9, -9);
    for (const MeshVertex& vertex : model.vertices) {
        EXPECT_NEAR(vertex.normal.length(), 1, 1e-3);
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], vertex.position[axis]);
            high[axis] = std::max(high[axis], vertex.position[axis]);
        }
    }
    EXPECT_NEAR(low.x(), -high.x(), 1e-3);  // one side mirrors the other
    EXPECT_GT(high.y(), 0.15f);             // the nose
    EXPECT_LT(ToVector(SystemPoint(25)).z(), low.z());
    for (const std::uint16_t index : model.indices) ASSERT_LT(index, model.vertices.size());

    const QVector3D eye(0, -4, 0);
    EXPECT_TRUE(ListenerHides(eye, {0, 1, 0}));
    EXPECT_FALSE(ListenerHides(eye, {0, -1, 0}));
    EXPECT_FALSE(ListenerHides(eye, {0.6f, 1, 0}));
}

}  // namespace
}  // namespace sonavel
