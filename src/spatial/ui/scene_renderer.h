// Draws a 3D scene with the shaders that every OpenGL from 2.1 on has, in software too.
#pragma once

#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <span>

#include "spatial/ui/mesh.h"
#include "spatial/ui/scene_balls.h"
#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_lines.h"

namespace sonavel {

struct SceneFrame {
    const SceneCamera& camera;
    const SceneLines& lines;
    std::span<const SceneBall> balls;
    float pixelRatio = 1;  // device pixels of a pixel
};

// All calls come with the same context current; the destructor's too.
class SceneRenderer {
  public:
    // False when the shaders are refused.
    bool Initialize();
    void Draw(const SceneFrame& frame);

  private:
    // A mesh in the memory of the display.
    struct StoredMesh {
        QOpenGLBuffer vertices{QOpenGLBuffer::VertexBuffer};
        QOpenGLBuffer indices{QOpenGLBuffer::IndexBuffer};
        int indexCount = 0;
    };
    struct Placement {
        QVector3D offset;
        float scale = 1;
        QVector3D tint{1, 1, 1};
        float shine = 0;
    };

    void Store(StoredMesh& stored, const Mesh& mesh);
    void DrawBackground();
    void DrawMesh(StoredMesh& mesh, const SceneFrame& frame, std::span<const Placement> placements);
    void DrawLines(const std::vector<LineVertex>& lines, const QMatrix4x4& matrix, float width);
    void SetAttribute(int location, int components, std::size_t offset, std::size_t stride);

    QOpenGLFunctions gl_;
    QOpenGLShaderProgram surfaces_;
    QOpenGLShaderProgram flat_;
    StoredMesh listener_;
    StoredMesh ball_;
    QOpenGLBuffer lineVertices_{QOpenGLBuffer::VertexBuffer};
};

}  // namespace sonavel
