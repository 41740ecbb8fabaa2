// The main frame: the open sounds as child windows, menus and bars made from the command tables,
// the status bar.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "app/active_sound_commands.h"
#include "app/child_windows.h"
#include "app/command_palette.h"
#include "app/frame_bars.h"
#include "app/keys_page.h"
#include "app/logo_window.h"
#include "app/media_player.h"
#include "app/recent_files.h"
#include "app/sound_closer.h"
#include "app/status_panes.h"
#include "app/welcome_page.h"
#include "app/work_gate.h"

namespace sonavel {

class CMainFrame : public QMainWindow, public WorkspaceObserver {
    Q_OBJECT

  public:
    CMainFrame();
    ~CMainFrame() override;

    // Makes menus and bars. `program` handles what neither the active sound nor the frame does,
    // first come first served. All must live as long as the frame shows anything.
    void Build(Workspace& workspace, RunningWork& work, std::vector<CommandTarget*> program);
    // Stands over the frame for some seconds; the frame's own bars come after it.
    void ShowStartUpLogo();
    void HideLogo();

    StatusPanes& Status() { return *status_; }
    RecentFiles& Recent() { return recent_; }
    CommandActions& Actions() { return actions_; }
    // What may be done while a long operation runs.
    WorkGate& Gate() { return *gate_; }
    const WorkGate& Gate() const { return *gate_; }
    ChildWindows& Area() { return *area_; }
    const ChildWindows& Area() const { return *area_; }
    // The preferences changed.
    void TakeSettings();
    // Shows in the status bar why something failed.
    void Tell(const Outcome& outcome);

    // --- What the frame's commands do

    SoundCloser& Closer() { return *closer_; }
    const SoundCloser& Closer() const { return *closer_; }
    // Of the active sound.
    bool HasOriginLine() const;
    bool ShowsOriginLine() const;
    void SwitchOriginLine();
    bool ShowsStatusBar() const;
    void SwitchStatusBar();
    Outcome Record();
    // Finds a command by its letters and runs it.
    Outcome OpenPalette();
    // Changes the keys of the commands.
    Outcome ChangeKeys();
    // Of all commands of the menus.
    std::vector<KeyRow> KeysOfCommands();

    void OnDocumentAdded(OpenSound& sound) override;
    void OnDocumentClosing(OpenSound& sound) override;
    void OnActivated(OpenSound* sound) override;

  Q_SIGNALS:
    void FilesDropped(const QStringList& absolutePaths);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    CommandTarget* Route(int commandId);
    void AddActions();
    void AddMenus();
    // Of the menus, as they are just now.
    std::vector<PaletteRow> AllCommands();
    void GoToTypedPlace(const QString& text);
    void RestorePlaces();
    void StorePlaces() const;

    // Null without an active sound.
    OriginLine* ActiveOrigin() const;
    void ActivateSoundOf(CChildFrame& frame);

    // The title, the panes and the states of all commands, once for many changes.
    void ScheduleRefresh() { refreshTimer_.start(); }
    void Refresh();
    void UpdateTitle();
    void UpdatePanes();
    // To the file of the active sound.
    void TellWhatOthersDid();
    void TellDesktop(const OpenSound* active);
    void RunMedia(MediaCommand command);
    void AfterCommand(int commandId, const Outcome& outcome);
    void ForgetSoundCommands();
    void FollowWork(RunningWork& work);

    ChildWindows* area_;
    StatusPanes* status_;
    WelcomePage* welcome_ = nullptr;
    FrameBars* bars_ = nullptr;
    QPointer<LogoWindow> logo_;
    RecentFiles recent_;
    CommandActions actions_;
    Workspace* workspace_ = nullptr;
    std::vector<CommandTarget*> program_;
    std::unique_ptr<CommandTarget> frameCommands_;
    std::optional<WorkGate> gate_;
    ActiveSoundCommands soundCommands_;
    std::optional<SoundCloser> closer_;
    QTimer refreshTimer_;
    QTimer playTimer_;
    MediaPlayer media_;
    QString title_;
};

}  // namespace sonavel
