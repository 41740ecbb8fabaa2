#include "spatial/ui/scene_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

#include "spatial/ui/scene_balls.h"
#include "spatial/ui/scene_labels.h"
#include "spatial/ui/scene_lines.h"
#include "spatial/ui/scene_renderer.h"

namespace sonavel {
namespace {

constexpr float kRoomRound = 1.16f;
constexpr double kKeyPixels = 20;
constexpr int kWheelStep = 120;
constexpr int kFocusFrame = 2;  // pixels

QSurfaceFormat SceneFormat() {
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);  // the painter of the labels fills outlines with it
    format.setSamples(4);
    return format;
}

}  // namespace

SceneWidget::SceneWidget(QWidget* parent) : QOpenGLWidget(parent), undrawn_(new QLabel(this)) {
    setFormat(SceneFormat());
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Scene"));
    undrawn_->setText(
        tr("The scene cannot be drawn on this display.\n"
           "Choose the points by their numbers."));
    undrawn_->setAlignment(Qt::AlignCenter);
    undrawn_->setFrameStyle(QFrame::Box | QFrame::Plain);
    undrawn_->setLineWidth(0);
    // A scene that is not drawn is black.
    undrawn_->setAutoFillBackground(true);
    undrawn_->hide();
    (new QVBoxLayout(this))->addWidget(undrawn_);
    camera_.Look(SceneCamera::View::kBehind);
    FitIfUntouched();
}

SceneWidget::~SceneWidget() {
    // The base class destroys the context, when this is no scene any more.
    if (context()) disconnect(context(), nullptr, this, nullptr);
    ReleaseDisplay();
}

void SceneWidget::SetContent(SceneContent content) {
    if (content == content_) return;
    content_ = std::move(content);
    // Under the pointer of a drag the scene must not shrink away.
    if (gesture_ != Gesture::kDragging) FitIfUntouched();
    update();
}

void SceneWidget::SetBall(std::optional<SourcePosition> position) {
    if (position == ball_) return;
    ball_ = position;
    update();
}

void SceneWidget::ShowAll() {
    zoomedByHand_ = false;
    camera_.Look(SceneCamera::View::kBehind);
    FitIfUntouched();
    update();
}

void SceneWidget::FitIfUntouched() {
    if (zoomedByHand_) return;
    camera_.Fit(kRoomRound * std::max(ReachOf(content_), RingsFor(content_).Radius()));
}

void SceneWidget::initializeGL() {
    // The context goes, and with it what was stored in it, when the window moves to another one.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &SceneWidget::ReleaseDisplay,
            Qt::UniqueConnection);
    renderer_ = std::make_unique<SceneRenderer>();
    if (!renderer_->Initialize()) renderer_.reset();
    TellIfUndrawn();
}

void SceneWidget::ReleaseDisplay() {
    drawnSize_ = QSize();
    if (!renderer_) return;
    makeCurrent();
    renderer_.reset();
    doneCurrent();
}

void SceneWidget::paintGL() {
    if (!renderer_) return;
    const FloorRings rings = RingsFor(content_);
    const SceneLines lines = LinesOf(content_, rings);
    std::vector<SceneBall> balls;
    for (const ScenePoint& point : content_.points) balls.push_back(BallOf(point, camera_));
    if (ball_) balls.push_back(MovingBall(*ball_, camera_));
    renderer_->Draw({camera_, lines, balls, static_cast<float>(devicePixelRatioF())});
    QPainter painter(this);
    DrawSceneLabels(painter, LabelsOf(camera_, content_, rings));
    if (!hasFocus()) return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), kFocusFrame));
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
}

void SceneWidget::focusInEvent(QFocusEvent* event) {
    QOpenGLWidget::focusInEvent(event);
    undrawn_->setLineWidth(kFocusFrame);
}

void SceneWidget::focusOutEvent(QFocusEvent* event) {
    QOpenGLWidget::focusOutEvent(event);
    undrawn_->setLineWidth(0);
}

void SceneWidget::resizeEvent(QResizeEvent* event) {
    // The base class paints within its own handling, so the camera has to know the size before.
    camera_.SetViewport(size());
    FitIfUntouched();
    // While the window is laid out, it may have no size for a moment. Of the size that it had
    // before the base class would then draw into other memory, and show that which it had: black.
    if (!size().isEmpty() && size() != drawnSize_) {
        QOpenGLWidget::resizeEvent(event);
        drawnSize_ = isValid() ? size() : QSize();
    }
    update();
}

void SceneWidget::showEvent(QShowEvent* event) {
    QOpenGLWidget::showEvent(event);
    QTimer::singleShot(0, this, &SceneWidget::TellIfUndrawn);
}

void SceneWidget::TellIfUndrawn() {
    undrawn_->setVisible(!isValid() || !renderer_);
}

void SceneWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    gesture_ = Gesture::kPressed;
    pressed_ = last_ = event->position();
    pointPressed_ = PointAt(content_.points, camera_, pressed_);
    if (pointPressed_) Q_EMIT PointPicked(*pointPressed_, event->modifiers());
}

void SceneWidget::mouseMoveEvent(QMouseEvent* event) {
    if (gesture_ == Gesture::kNone) return;
    const QPointF pixel = event->position();
    const QPointF way = pixel - pressed_;
    if (gesture_ == Gesture::kPressed) {
        if (way.manhattanLength() < QApplication::startDragDistance()) return;
        BeginMove(pressed_);
    }
    if (gesture_ == Gesture::kDragging) {
        DragTo(pixel, event->modifiers());
    } else {
        camera_.Orbit(pixel - last_);
        update();
    }
    last_ = pixel;
}

void SceneWidget::BeginMove(const QPointF& pixel) {
    const bool drags = pointPressed_ && content_.dragging == PointDragging::kOn &&
                       *pointPressed_ < static_cast<int>(content_.points.size());
    gesture_ = drags ? Gesture::kDragging : Gesture::kOrbiting;
    if (!drags) return;
    grabbed_ = ToVector(content_.points[static_cast<std::size_t>(*pointPressed_)].position);
    grabOffset_ = camera_.Project(grabbed_).value_or(pixel) - pixel;
}

void SceneWidget::DragTo(const QPointF& pixel, Qt::KeyboardModifiers modifiers) {
    const DragMode mode =
        modifiers.testFlag(Qt::ShiftModifier) ? DragMode::kHeight : DragMode::kInPlane;
    const QVector3D place = DraggedTo(camera_, grabbed_, pixel + grabOffset_, mode);
    Q_EMIT PointDragged(*pointPressed_, ToPosition(place));
}

void SceneWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    gesture_ = Gesture::kNone;
    FitIfUntouched();
    update();
}

void SceneWidget::wheelEvent(QWheelEvent* event) {
    zoomedByHand_ = true;
    camera_.Zoom(double(event->angleDelta().y()) / kWheelStep);
    update();
    event->accept();
}

void SceneWidget::keyPressEvent(QKeyEvent* event) {
    if (LookByKey(event->key()) || MoveByKey(event->key())) {
        update();
        return;
    }
    QOpenGLWidget::keyPressEvent(event);
}

bool SceneWidget::LookByKey(int key) {
    switch (key) {
        case Qt::Key_F:
            camera_.Look(SceneCamera::View::kFront);
            return true;
        case Qt::Key_S:
            camera_.Look(SceneCamera::View::kSide);
            return true;
        case Qt::Key_T:
            camera_.Look(SceneCamera::View::kTop);
            return true;
        case Qt::Key_B:
        case Qt::Key_Home:
            ShowAll();
            return true;
        default:
            return false;
    }
}

bool SceneWidget::MoveByKey(int key) {
    switch (key) {
        case Qt::Key_Left:
            camera_.Orbit({-kKeyPixels, 0});
            return true;
        case Qt::Key_Right:
            camera_.Orbit({kKeyPixels, 0});
            return true;
        case Qt::Key_Up:
            camera_.Orbit({0, -kKeyPixels});
            return true;
        case Qt::Key_Down:
            camera_.Orbit({0, kKeyPixels});
            return true;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
        case Qt::Key_Minus:
            zoomedByHand_ = true;
            camera_.Zoom(key == Qt::Key_Minus ? -1 : 1);
            return true;
        default:
            return false;
    }
}

}  // namespace sonavel
