#include "view/ui/level_bar.h"

#include <QMouseEvent>

namespace sonavel {

namespace {

constexpr int kMomentMs = 1200;
// Pixels along the right edge in which the pointer calls the bar; the rest of the ruler stays in
// sight.
constexpr int kEdgeReach = 6;

}  // namespace

LevelBar::LevelBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
    hide();
}

void LevelBar::SetLevel(Level level) {
    level_ = level;
    ShowIfWanted();
}

void LevelBar::FollowPointer(const QPoint& position) {
    QRect edge = geometry();
    edge.setLeft(edge.right() - kEdgeReach + 1);
    SetPointerNear(edge.contains(position));
}

void LevelBar::ForgetPointer() {
    SetPointerNear(false);
}

void LevelBar::ShowForAMoment() {
    moment_.start(kMomentMs, this);
    ShowIfWanted();
}

void LevelBar::enterEvent(QEnterEvent* event) {
    QScrollBar::enterEvent(event);
    SetPointerNear(true);
}

void LevelBar::leaveEvent(QEvent* event) {
    QScrollBar::leaveEvent(event);
    SetPointerNear(false);
}

void LevelBar::mouseReleaseEvent(QMouseEvent* event) {
    QScrollBar::mouseReleaseEvent(event);
    // No leave comes while a button is held.
    SetPointerNear(rect().contains(event->position().toPoint()));
}

void LevelBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != moment_.timerId()) return QScrollBar::timerEvent(event);
    moment_.stop();
    ShowIfWanted();
}

void LevelBar::SetPointerNear(bool near) {
    pointerIsNear_ = near;
    ShowIfWanted();
}

void LevelBar::ShowIfWanted() {
    const bool wanted = pointerIsNear_ || isSliderDown() || moment_.isActive();
    setVisible(level_ == Level::kInPart && wanted);
}

}  // namespace sonavel
