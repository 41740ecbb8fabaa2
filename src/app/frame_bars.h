// The bars of the main frame: which there are, how they stand at first, and what they show of the
// sounds.
#pragma once

#include <QMainWindow>
#include <QPointer>

#include "app/bars/format_bar.h"
#include "app/bars/window_list_bar.h"
#include "app/child_windows.h"
#include "app/command_bar.h"
#include "app/read_outs.h"
#include "meter/ui/play_meter_bar.h"
#include "workspace/workspace.h"

namespace sonavel {

class FrameBars : public QObject {
    Q_OBJECT

  public:
    // Belongs to the frame, which all others must outlive.
    FrameBars(Workspace& workspace, ChildWindows& area, CommandActions& actions,
              QMainWindow* frame);

    // Puts them round the frame and, with its actions and menus there, into the View menu.
    void Add();
    CommandTarget& MeterCommands() { return meter_->Commands(); }
    void TakeSettings();

    void AddSound(CChildFrame& frame);
    void RemoveSound(const CChildFrame& frame);
    // The meter follows the active sound, or none.
    void GiveMeterTo(const OpenSound* active);
    void Refresh();
    void ShowReadOuts(const ReadOuts& readOuts);

    // Floating bars come with the frame, not before it.
    void HoldFloating();
    void ShowFloating();

  private:
    void AddBar(QToolBar& bar, const QString& text, Qt::ToolBarArea area = Qt::TopToolBarArea);
    void AddMeter();
    void AddWindowList();
    void ShowInViewMenu(QWidget& bar, QAction& toggle, const QString& text);
    void ShowFrameMenu(CChildFrame* frame, const QPoint& globalPosition);
    void ConnectMeter(CChildFrame& frame);
    void FitMeter();
    void ReferMeter(const CWave& sound);

    Workspace& workspace_;
    ChildWindows& area_;
    CommandActions& actions_;
    QMainWindow& frame_;
    TransportBar* transport_ = nullptr;
    ZoomBar* zoom_ = nullptr;
    FormatBar* format_ = nullptr;
    WindowListBar* windowList_ = nullptr;
    PlayMeterBar* meter_;
    QList<QPointer<QWidget>> held_;
};

}  // namespace sonavel
