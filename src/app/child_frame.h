// The window of one open sound inside the main frame.
#pragma once

#include <QMdiSubWindow>

#include "document/sound_doc.h"
#include "view/ui/command_menu.h"
#include "workspace/workspace.h"

namespace sonavel {

class OriginLine;
class OverviewStrip;
class SoundViewWidget;

class CChildFrame : public QMdiSubWindow, public DocumentObserver {
    Q_OBJECT

  public:
    CChildFrame(OpenSound& sound, CommandActions& actions, QWidget* parent = nullptr);
    ~CChildFrame() override;

    OpenSound& Sound() { return *sound_; }
    const OpenSound& Sound() const { return *sound_; }
    SoundViewWidget& View() { return *view_; }
    // What it goes by in titles and lists: the sound's title, and whether it is being recorded,
    // which is to be seen while another window is the active one.
    QString Name() const;
    // Above the waveform of an imported sound, once the person has not hidden it.
    OriginLine& Origin() { return *origin_; }
    const OriginLine& Origin() const { return *origin_; }
    // Drops the view, whose sound is about to go.
    void LetGo();

    void OnSoundChanged(std::uint32_t firstChangedFrame) override;
    void OnTitleOrModifiedChanged() override;

  Q_SIGNALS:
    // The person closes the window; whether it may go is the receiver's to find out.
    void CloseRequested();
    void TitleChanged();
    // The samples, the length or the format.
    void SoundChanged();
    // Anything that the panes, the bars or the menus show.
    void StateChanged();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* MakePane();
    void ShowTitle();
    void ShowOrigin();

    OpenSound* sound_;
    OriginLine* origin_;
    SoundViewWidget* view_;
    OverviewStrip* overview_;
};

}  // namespace sonavel
