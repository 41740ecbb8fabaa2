// The scroll bar of the level. It lies over the level ruler, so it shows only while somebody is
// about to use it: the pointer is at the right edge of the window, the slider is held, or the
// keyboard has just moved the level.
#pragma once

#include <QBasicTimer>
#include <QScrollBar>

namespace sonavel {

class LevelBar : public QScrollBar {
  public:
    // Over its parent, hidden at first. The parent tells where the pointer is.
    explicit LevelBar(QWidget* parent);

    // A level that is wholly in sight cannot be scrolled, and its bar never shows.
    enum class Level { kWhole, kInPart };
    void SetLevel(Level level);
    // The pointer is there, in the parent's pixels, and over none of its children.
    void FollowPointer(const QPoint& position);
    void ForgetPointer();
    void ShowForAMoment();

  protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void SetPointerNear(bool near);
    void ShowIfWanted();

    Level level_ = Level::kWhole;
    bool pointerIsNear_ = false;
    QBasicTimer moment_;
};

}  // namespace sonavel
