// The application: the services that the engine asks of its host, the open sounds, the main frame,
// and the commands that concern the program as a whole.
#pragma once

#include <QStringList>

#include "app/logo_sound.h"
#include "app/main_frame.h"
#include "catalogue/ui/catalogue_window.h"
#include "document/clip_image.h"
#include "effects/ui/effect_command_target.h"
#include "platform/qt/qt_progress.h"
#include "platform/qt/qt_prompts.h"
#include "platform/qt/qt_wave_clipboard.h"
#include "workspace/workspace.h"

namespace sonavel {

class Application {
  public:
    // Makes the main frame, under the logo; nothing is shown of it yet.
    Application(WaveDevices& devices, const ProgramFolder& folder);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    CMainFrame& Frame() { return frame_; }
    Workspace& Sounds() { return workspace_; }
    const Workspace& Sounds() const { return workspace_; }

    // Paths are file texts (platform/qt/file_names.h).

    // The file of the command line. What went wrong, when it cannot be opened; messages of a file
    // that can are shown once the frame is.
    std::optional<QString> OpenAtStart(const QString& absolutePath);
    void Show();

    // A file that is open already is brought to the front. The reason of a failure names the file.
    Outcome OpenFile(const QString& absolutePath);

    // --- What the application's commands do

    Outcome NewSound();
    Outcome OpenFiles();  // those chosen in a dialog
    bool HasModifiedSounds() const;
    Outcome SaveAll();
    void ShowFileProperties();
    void EditPreferences();
    void ShowSampleDatabase();
    void ShowAbout();
    void Exit();

  private:
    EffectHost MakeEffectHost();
    void AddActions();
    void ConnectFrame();
    void TakeSettings();
    void RunLogo();
    QString FolderToOpen();
    Outcome Open(const QString& absolutePath);

    LogoSound logoSound_;
    QtPrompts prompts_;
    QtProgressFactory progress_;
    QtWaveClipboard clipboard_{ImageOf16Bits};
    CMainFrame frame_;
    Workspace workspace_;
    EffectState effectState_;
    EffectMemory effectMemory_;
    EffectCommands effectCommands_;
    std::unique_ptr<CommandTarget> commands_;
    std::unique_ptr<CatalogueWindow> catalogue_;
    QStringList heldMessages_;
};

}  // namespace sonavel
