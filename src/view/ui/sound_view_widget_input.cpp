// How the window of a view takes mouse, wheel and keys.
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <cmath>

#include "view/ui/asking_view_commands.h"
#include "view/ui/qt_values.h"
#include "view/ui/sound_view_widget.h"

namespace sonavel {

namespace {

constexpr int kDragTickMs = 30;
constexpr double kAngleOfNotch = 120;

MouseButton ButtonOf(Qt::MouseButton button) {
    switch (button) {
        case Qt::RightButton:
            return MouseButton::kRight;
        case Qt::MiddleButton:
            return MouseButton::kMiddle;
        default:
            return MouseButton::kLeft;
    }
}

bool IsMouseButton(Qt::MouseButton button) {
    return button == Qt::LeftButton || button == Qt::RightButton || button == Qt::MiddleButton;
}

// The keys of the number pad count as the others, and both Enter keys are one.
QKeySequence KeyOf(const QKeyEvent& event) {
    const int key = event.key() == Qt::Key_Return ? int{Qt::Key_Enter} : event.key();
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key)));
}

double NotchesOf(const QWheelEvent& event) {
    const QPoint angle = event.angleDelta();
    // A tilted wheel, or one turned with Alt, reports sideways.
    return (std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y()) / kAngleOfNotch;
}

}  // namespace

// --- Keys

bool SoundViewWidget::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // The view's own keys come before every shortcut of the window.
        if (actions_.CommandOfPlainKey(KeyOf(*static_cast<QKeyEvent*>(event)))) {
            event->accept();
            return true;
        }
    } else if (event->type() == QEvent::UngrabMouse || event->type() == QEvent::WindowDeactivate) {
        mouse_.Cancel();
    }
    return QWidget::event(event);
}

void SoundViewWidget::keyPressEvent(QKeyEvent* event) {
    const int command = actions_.CommandOfPlainKey(KeyOf(*event));
    if (command == 0) return QWidget::keyPressEvent(event);
    const ScrollState before = view_.Zoom().Vertical();
    actions_.Run(command);
    if (view_.Zoom().Vertical() != before) verticalBar_->ShowForAMoment();
}

// --- Mouse

PointerEvent SoundViewWidget::PointerOf(const QSinglePointEvent& event) const {
    const QPoint position = event.position().toPoint();
    return {position.x(), position.y(), event.modifiers().testFlag(Qt::ShiftModifier),
            event.modifiers().testFlag(Qt::ControlModifier)};
}

void SoundViewWidget::mousePressEvent(QMouseEvent* event) {
    if (!IsMouseButton(event->button()) || HoldsMarkerAt(event->position())) return;
    Carry(mouse_.Press(ButtonOf(event->button()), PointerOf(*event)), event->position().toPoint());
    FollowDrag();
}

// Whether a marker lies there that nobody may change just now.
bool SoundViewWidget::HoldsMarkerAt(const QPointF& position) const {
    const QPoint pixel = position.toPoint();
    return mouse_.TargetAt(pixel.x(), pixel.y()) == MouseTarget::kMarkerFlag &&
           !actions_.Offered(view_command::kMarkerRename);
}

void SoundViewWidget::Carry(MouseRequest request, const QPoint& place) {
    switch (request) {
        case MouseRequest::kNone:
            break;
        case MouseRequest::kContextMenuNormal:
            OpenContextMenu(ContextMenu::kSoundViewNormal, mapToGlobal(place));
            break;
        case MouseRequest::kContextMenuSelection:
            OpenContextMenu(ContextMenu::kSoundViewSelection, mapToGlobal(place));
            break;
        case MouseRequest::kMarkerMenu:
            OpenContextMenu(ContextMenu::kMarker, mapToGlobal(place));
            break;
        case MouseRequest::kRulerMenu:
            OpenContextMenu(ContextMenu::kRuler, mapToGlobal(place));
            break;
        case MouseRequest::kUserZoom:
            actions_.Run(view_command::kZoomUser);
            break;
        case MouseRequest::kEditMarker:
            static_cast<void>(
                AskAboutMarker(view_, mouse_.MarkerAt(place.x(), place.y()), window()));
            break;
    }
}

void SoundViewWidget::mouseMoveEvent(QMouseEvent* event) {
    mouse_.Move(PointerOf(*event));
    if (mouse_.IsDragging()) return;
    ShowPointerShape(event->position());
    verticalBar_->FollowPointer(event->position().toPoint());
}

void SoundViewWidget::leaveEvent(QEvent* event) {
    verticalBar_->ForgetPointer();
    QWidget::leaveEvent(event);
}

void SoundViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    mouse_.Release(PointerOf(*event));
    FollowDrag();
    ShowPointerShape(event->position());
}

void SoundViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (HoldsMarkerAt(event->position())) return;
    if (event->button() == Qt::LeftButton)
        Carry(mouse_.DoubleClick(PointerOf(*event)), event->position().toPoint());
    else
        mousePressEvent(event);
    FollowDrag();
}

void SoundViewWidget::FollowDrag() {
    if (mouse_.IsDragging())
        dragTimer_.start(kDragTickMs, this);
    else
        dragTimer_.stop();
}

void SoundViewWidget::timerEvent(QTimerEvent* event) {
    if (event->timerId() != dragTimer_.timerId()) return QWidget::timerEvent(event);
    if (mouse_.IsDragging())
        mouse_.Tick();
    else
        dragTimer_.stop();
}

void SoundViewWidget::ShowPointerShape(const QPointF& position) {
    const QPoint pixel = position.toPoint();
    switch (mouse_.TargetAt(pixel.x(), pixel.y())) {
        case MouseTarget::kSelectionStart:
        case MouseTarget::kSelectionEnd:
            setCursor(Qt::SplitHCursor);
            break;
        case MouseTarget::kMarkerFlag:
            setCursor(Qt::PointingHandCursor);
            break;
        default:
            setCursor(Qt::ArrowCursor);
            break;
    }
}

void SoundViewWidget::wheelEvent(QWheelEvent* event) {
    mouse_.Wheel(PointerOf(*event), NotchesOf(*event));
    event->accept();
}

bool SoundViewWidget::eventFilter(QObject* object, QEvent* event) {
    // No leave comes to a parent whose child the pointer enters.
    if (event->type() == QEvent::Enter && object != verticalBar_) verticalBar_->ForgetPointer();
    if (event->type() != QEvent::Wheel) return QWidget::eventFilter(object, event);
    const auto& wheel = *static_cast<QWheelEvent*>(event);
    if (object == verticalBar_) {
        mouse_.WheelOverLevel(NotchesOf(wheel));
    } else {
        const QPoint child = static_cast<QWidget*>(object)->pos();
        PointerEvent pointer = PointerOf(wheel);
        pointer.x += child.x();
        pointer.y += child.y();
        mouse_.Wheel(pointer, NotchesOf(wheel));
    }
    event->accept();
    return true;
}

// --- Context menus

void SoundViewWidget::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse opens the menus through its presses.
    if (event->reason() == QContextMenuEvent::Mouse) return;
    const QRect cursor = ToQRect(CursorRect(view_.State().Geometry().waveform,
                                            view_.Zoom().Pixels(), view_.State().Cursor()));
    const QPoint place = cursor.isEmpty() ? rect().center() : cursor.center();
    OpenContextMenu(view_.State().HasSelection() ? ContextMenu::kSoundViewSelection
                                                 : ContextMenu::kSoundViewNormal,
                    mapToGlobal(place));
}

void SoundViewWidget::OpenContextMenu(ContextMenu menu, const QPoint& globalPosition) {
    auto* window = new QMenu(this);
    window->setObjectName(QString::fromUtf8(NameOf(menu)));
    window->setAttribute(Qt::WA_DeleteOnClose);
    actions_.FillMenu(*window, EntriesOf(menu));
    window->popup(globalPosition);
}

}  // namespace sonavel
