// The main frame: the open sounds as child windows, menus and bars made from the command tables,
// the status bar.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "app/bars/format_bar.h"
#include "app/bars/window_list_bar.h"
#include "app/child_windows.h"
#include "app/command_bar.h"
#include "app/document_saver.h"
#include "app/logo_window.h"
#include "app/recent_files.h"
#include "app/status_panes.h"
#include "meter/ui/play_meter_bar.h"
#include "spatial/ui/spatial_memory.h"

namespace sonavel {

class CMainFrame : public QMainWindow, public WorkspaceObserver {
    Q_OBJECT

  public:
    CMainFrame();
    ~CMainFrame() override;

    // Makes menus and bars. `program` handles what neither the active sound nor the frame does,
    // first come first served. All must live as long as the frame shows anything.
    void Build(Workspace& workspace, std::vector<CommandTarget*> program);
    // Stands over the frame for some seconds; the frame's own bars come after it.
    void ShowStartUpLogo();

    StatusPanes& Status() { return *status_; }
    RecentFiles& Recent() { return recent_; }
    CommandActions& Actions() { return actions_; }
    ChildWindows& Area() { return *area_; }
    const ChildWindows& Area() const { return *area_; }
    // The preferences changed.
    void TakeSettings();
    // Shows in the status bar why something failed.
    void Tell(const Outcome& outcome);

    // --- What the frame's commands do

    bool HasOthers() const { return workspace_->Count() > 1; }
    // Asks whether to save what is modified; cancelled when that was.
    Outcome CloseActive();
    // Likewise; nothing is closed before everything was asked.
    Outcome CloseAll();
    Outcome CloseOthers();  // than the active one
    bool ShowsStatusBar() const;
    void SwitchStatusBar();
    Outcome Record();

    void OnDocumentAdded(OpenSound& sound) override;
    void OnDocumentClosing(OpenSound& sound) override;
    void OnActivated(OpenSound* sound) override;

  Q_SIGNALS:
    void FilesDropped(const QStringList& absolutePaths);

  protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    CommandTarget* Route(int commandId);
    void AddActions();
    void AddMenus();
    void AddBars();
    void AddBar(QToolBar& bar, const QString& text, Qt::ToolBarArea area = Qt::TopToolBarArea);
    void AddMeter();
    void ShowInViewMenu(QAction& toggle, const QString& text);
    // The meter follows the active sound.
    void ConnectMeter(CChildFrame& frame);
    void GiveMeterTo(const OpenSound* active);
    void FitMeter();
    void ReferMeter(const CWave& sound);
    void AddWindowList();
    void ShowFrameMenu(CChildFrame* frame, const QPoint& globalPosition);
    // What the bars show of the sounds.
    void RefreshBars();
    void RestorePlaces();
    void StorePlaces() const;
    // Floating bars come with the frame, not before it.
    void HoldFloatingBars();
    void ShowFloatingBars();

    void ForgetCommands();
    Outcome AskWhetherToSave(std::size_t index);
    Outcome Close(std::size_t index);
    void ActivateSoundOf(CChildFrame& frame);

    // The title, the panes and the states of all commands, once for many changes.
    void ScheduleRefresh() { refreshTimer_.start(); }
    void Refresh();
    void UpdateTitle();
    void UpdatePanes();
    void AfterCommand(int commandId, const Outcome& outcome);

    ChildWindows* area_;
    StatusPanes* status_;
    TransportBar* transport_ = nullptr;
    ZoomBar* zoom_ = nullptr;
    FormatBar* format_ = nullptr;
    WindowListBar* windowList_ = nullptr;
    PlayMeterBar* meter_ = nullptr;
    QPointer<LogoWindow> logo_;
    RecentFiles recent_;
    CommandActions actions_;
    Workspace* workspace_ = nullptr;
    std::vector<CommandTarget*> program_;
    std::unique_ptr<CommandTarget> frameCommands_;
    // Of the active sound.
    std::unique_ptr<CommandTarget> viewCommands_;
    std::optional<DocumentSaver> saver_;
    std::unique_ptr<CommandTarget> documentCommands_;
    std::unique_ptr<CommandTarget> spatialCommands_;
    SpatialMemory spatialMemory_;
    QList<QPointer<QWidget>> heldBars_;
    QTimer refreshTimer_;
    QTimer playTimer_;
    QString title_;
};

}  // namespace sonavel
