#include "spatial/ui/scene_renderer.h"

#include <cstddef>

#include "spatial/ui/listener_model.h"

namespace sonavel {
namespace {

enum Attribute : int { kPosition = 0, kNormal = 1, kColour = 2 };

constexpr const char* kSurfaceVertexShader = R"(
attribute highp vec3 position;
attribute highp vec3 normal;
attribute lowp vec3 colour;
uniform highp mat4 matrix;
uniform highp vec3 offset;
uniform highp float scale;
varying highp vec3 place;
varying highp vec3 outward;
varying lowp vec3 base;
void main() {
    place = offset + scale * position;
    outward = normal;
    base = colour;
    gl_Position = matrix * vec4(place, 1.0);
})";

// A lamp over the eye's left shoulder, a sky that lights what looks up, and a bright rim.
constexpr const char* kSurfaceFragmentShader = R"(
uniform highp vec3 eye;
uniform highp vec3 lamp;
uniform lowp vec3 tint;
uniform lowp float shine;
varying highp vec3 place;
varying highp vec3 outward;
varying lowp vec3 base;
void main() {
    highp vec3 n = normalize(outward);
    highp vec3 toEye = normalize(eye - place);
    highp vec3 toLamp = normalize(lamp - place);
    highp float lit = max(dot(n, toLamp), 0.0);
    highp float sky = 0.5 + 0.5 * n.z;
    highp float rim = pow(1.0 - max(dot(n, toEye), 0.0), 3.0);
    highp float glint = pow(max(dot(n, normalize(toEye + toLamp)), 0.0), 32.0);
    highp vec3 c = base * tint * (0.22 + 0.26 * sky + 0.62 * lit);
    c += vec3(0.16, 0.24, 0.27) * rim + vec3(0.08 + 0.35 * shine) * glint;
    gl_FragColor = vec4(mix(c, tint, 0.25 * shine), 1.0);
})";

constexpr const char* kFlatVertexShader = R"(
attribute highp vec3 position;
attribute lowp vec4 colour;
uniform highp mat4 matrix;
varying lowp vec4 base;
void main() {
    base = colour;
    gl_Position = matrix * vec4(position, 1.0);
})";

constexpr const char* kFlatFragmentShader = R"(
varying lowp vec4 base;
void main() {
    gl_FragColor = base;
})";

const QVector4D kSkyColour(0.23f, 0.31f, 0.37f, 1);
const QVector4D kGroundColour(0.09f, 0.12f, 0.15f, 1);
constexpr float kThinPixels = 1.2f;
constexpr float kThickPixels = 3;

bool Build(QOpenGLShaderProgram& program, const char* vertex, const char* fragment) {
    program.bindAttributeLocation("position", kPosition);
    program.bindAttributeLocation("normal", kNormal);
    program.bindAttributeLocation("colour", kColour);
    return program.addShaderFromSourceCode(QOpenGLShader::Vertex, vertex) &&
           program.addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) && program.link();
}

QVector3D TintOf(const QColor& colour) {
    return {colour.redF(), colour.greenF(), colour.blueF()};
}

QVector3D LampOf(const SceneCamera& camera) {
    const QVector3D right = QVector3D::crossProduct(camera.Forward(), {0, 0, 1});
    return camera.Eye() + camera.Distance() * (QVector3D(0, 0, 0.9f) - 0.6f * right);
}

}  // namespace

bool SceneRenderer::Initialize() {
    gl_.initializeOpenGLFunctions();
    if (!Build(surfaces_, kSurfaceVertexShader, kSurfaceFragmentShader)) return false;
    if (!Build(flat_, kFlatVertexShader, kFlatFragmentShader)) return false;
    Store(listener_, ListenerModel());
    Store(ball_, BallModel());
    return lineVertices_.create();
}

void SceneRenderer::Store(StoredMesh& stored, const Mesh& mesh) {
    stored.vertices.create();
    stored.vertices.bind();
    stored.vertices.allocate(mesh.vertices.data(),
                             static_cast<int>(mesh.vertices.size() * sizeof(MeshVertex)));
    stored.indices.create();
    stored.indices.bind();
    stored.indices.allocate(mesh.indices.data(),
                            static_cast<int>(mesh.indices.size() * sizeof(std::uint16_t)));
    stored.indexCount = static_cast<int>(mesh.indices.size());
}

void SceneRenderer::Draw(const SceneFrame& frame) {
    gl_.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gl_.glDisable(GL_DEPTH_TEST);
    DrawBackground();
    gl_.glEnable(GL_DEPTH_TEST);
    const Placement listener;
    DrawMesh(listener_, frame, std::span(&listener, 1));
    std::vector<Placement> balls;
    for (const SceneBall& ball : frame.balls)
        balls.push_back({ball.centre, ball.radius, TintOf(ball.colour), 1});
    DrawMesh(ball_, frame, balls);
    gl_.glEnable(GL_BLEND);
    // The picture stays opaque: the window would shine through it otherwise.
    gl_.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE);
    gl_.glDepthMask(GL_FALSE);
    const QMatrix4x4 matrix = frame.camera.Matrix();
    DrawLines(frame.lines.thin, matrix, kThinPixels * frame.pixelRatio);
    DrawLines(frame.lines.thick, matrix, kThickPixels * frame.pixelRatio);
    gl_.glDepthMask(GL_TRUE);
    gl_.glDisable(GL_BLEND);
    gl_.glDisable(GL_DEPTH_TEST);
    // The painter that goes on in this context expects none.
    for (const Attribute attribute : {kPosition, kNormal, kColour})
        gl_.glDisableVertexAttribArray(attribute);
}

void SceneRenderer::DrawBackground() {
    const LineVertex corners[] = {
        {{-1, -1, 0}, kGroundColour},
        {{1, -1, 0}, kGroundColour},
        {{-1, 1, 0}, kSkyColour},
        {{1, 1, 0}, kSkyColour},
    };
    flat_.bind();
    flat_.setUniformValue("matrix", QMatrix4x4());
    lineVertices_.bind();
    lineVertices_.allocate(corners, sizeof corners);
    SetAttribute(kPosition, 3, offsetof(LineVertex, position), sizeof(LineVertex));
    SetAttribute(kColour, 4, offsetof(LineVertex, colour), sizeof(LineVertex));
    gl_.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    lineVertices_.release();
    flat_.release();
}

void SceneRenderer::DrawMesh(StoredMesh& mesh, const SceneFrame& frame,
                             std::span<const Placement> placements) {
    surfaces_.bind();
    surfaces_.setUniformValue("matrix", frame.camera.Matrix());
    surfaces_.setUniformValue("eye", frame.camera.Eye());
    surfaces_.setUniformValue("lamp", LampOf(frame.camera));
    mesh.vertices.bind();
    mesh.indices.bind();
    SetAttribute(kPosition, 3, offsetof(MeshVertex, position), sizeof(MeshVertex));
    SetAttribute(kNormal, 3, offsetof(MeshVertex, normal), sizeof(MeshVertex));
    SetAttribute(kColour, 3, offsetof(MeshVertex, colour), sizeof(MeshVertex));
    for (const Placement& placement : placements) {
        surfaces_.setUniformValue("offset", placement.offset);
        surfaces_.setUniformValue("scale", placement.scale);
        surfaces_.setUniformValue("tint", placement.tint);
        surfaces_.setUniformValue("shine", placement.shine);
        gl_.glDrawElements(GL_TRIANGLES, mesh.indexCount, GL_UNSIGNED_SHORT, nullptr);
    }
    gl_.glDisableVertexAttribArray(kNormal);
    mesh.indices.release();
    mesh.vertices.release();
    surfaces_.release();
}

void SceneRenderer::DrawLines(const std::vector<LineVertex>& lines, const QMatrix4x4& matrix,
                              float width) {
    if (lines.empty()) return;
    flat_.bind();
    flat_.setUniformValue("matrix", matrix);
    lineVertices_.bind();
    lineVertices_.allocate(lines.data(), static_cast<int>(lines.size() * sizeof(LineVertex)));
    SetAttribute(kPosition, 3, offsetof(LineVertex, position), sizeof(LineVertex));
    SetAttribute(kColour, 4, offsetof(LineVertex, colour), sizeof(LineVertex));
    gl_.glLineWidth(width);
    gl_.glDrawArrays(GL_LINES, 0, static_cast<int>(lines.size()));
    lineVertices_.release();
    flat_.release();
}

void SceneRenderer::SetAttribute(int location, int components, std::size_t offset,
                                 std::size_t stride) {
    const auto index = static_cast<unsigned>(location);
    gl_.glEnableVertexAttribArray(index);
    // The library takes an offset into the buffer as a pointer.
    const void* place = reinterpret_cast<const void*>(offset);  // NOLINT(performance-no-int-to-ptr)
    gl_.glVertexAttribPointer(index, components, GL_FLOAT, GL_FALSE, static_cast<int>(stride),
                              place);
}

}  // namespace sonavel
