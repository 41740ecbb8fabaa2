// The 3D scene of an editor: the listener with the points around it, to look at from all sides, to
// choose points in and to drag them.
#pragma once

#include <QLabel>
#include <QOpenGLWidget>
#include <QSize>
#include <memory>
#include <optional>

#include "spatial/ui/scene_camera.h"
#include "spatial/ui/scene_content.h"

namespace sonavel {

class SceneRenderer;

class SceneWidget : public QOpenGLWidget {
    Q_OBJECT

  public:
    explicit SceneWidget(QWidget* parent = nullptr);
    ~SceneWidget() override;

    const SceneContent& Content() const { return content_; }
    const SceneCamera& Camera() const { return camera_; }
    void SetContent(SceneContent content);
    // The source while it plays.
    void SetBall(std::optional<SourcePosition> position);
    const std::optional<SourcePosition>& Ball() const { return ball_; }
    // From behind and above, with everything in sight.
    void ShowAll();

    QSize sizeHint() const override { return {560, 500}; }
    QSize minimumSizeHint() const override { return {300, 260}; }

  Q_SIGNALS:
    void PointPicked(int index, Qt::KeyboardModifiers modifiers);
    void PointDragged(int index, const SourcePosition& position);

  protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum class Gesture { kNone, kPressed, kOrbiting, kDragging };

    bool LookByKey(int key);
    bool MoveByKey(int key);
    void FitIfUntouched();
    void BeginMove(const QPointF& pixel);
    void DragTo(const QPointF& pixel, Qt::KeyboardModifiers modifiers);
    void TellIfUndrawn();
    void ReleaseDisplay();

    SceneContent content_;
    std::optional<SourcePosition> ball_;
    SceneCamera camera_;
    bool zoomedByHand_ = false;
    Gesture gesture_ = Gesture::kNone;
    QPointF pressed_;
    QPointF last_;
    std::optional<int> pointPressed_;
    QVector3D grabbed_;   // where the point was when its drag began
    QPointF grabOffset_;  // from the pointer to the point
    std::unique_ptr<SceneRenderer> renderer_;
    QSize drawnSize_;  // for which the base class has memory; empty: none
    QLabel* undrawn_;
};

}  // namespace sonavel
