// The area of the main frame in which the windows of the open sounds lie: how they come, are
// arranged and go.
#pragma once

#include <QMdiArea>

#include "app/child_frame.h"

class QMenu;

namespace sonavel {

class ChildWindows : public QMdiArea {
    Q_OBJECT

  public:
    explicit ChildWindows(QWidget* parent);

    // Null when the sound has no window here.
    CChildFrame* FrameOf(const OpenSound& sound) const;
    bool HasAny() const { return !subWindowList().isEmpty(); }
    // Shows the frame a title bar below and beside the one that came before.
    void Add(CChildFrame& frame);
    // Lets the frame's sound go, and soon the frame. Activated() is quiet meanwhile.
    void Remove(CChildFrame& frame);
    // Brings it to the front, from its icon if need be.
    void Choose(CChildFrame& frame);
    // Every window with all that it holds.
    void RepaintAll();

    void Cascade() { cascadeSubWindows(); }
    void TileHorizontally() { Tile(Tiling::kRows); }
    void TileVertically() { Tile(Tiling::kColumns); }
    void Next() { activateNextSubWindow(); }
    void Previous() { activatePreviousSubWindow(); }
    bool ShowsTabs() const { return viewMode() == TabbedView; }
    void SwitchTabs();

    // Adds a row for each window, the active one checked.
    void FillMenu(QMenu& menu);

  Q_SIGNALS:
    // The person, or the area itself, brought this frame to the front.
    void Activated(CChildFrame& frame);

  private:
    enum class Tiling { kRows, kColumns };

    void Tile(Tiling tiling);

    int removing_ = 0;
};

}  // namespace sonavel
