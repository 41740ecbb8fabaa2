// The application: the services that the engine asks of its host, the open sounds, the main frame,
// and the commands that concern the program as a whole.
#pragma once

#include <QStringList>

#include "app/exchange/editor_scripts.h"
#include "app/exchange/sound_importer.h"
#include "app/help/help_desk.h"
#include "app/logo_sound.h"
#include "app/main_frame.h"
#include "app/recovery/program_end.h"
#include "catalogue/ui/catalogue_window.h"
#include "codec/client/child_codecs.h"
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
    // Unsaved work is kept in `recoveryFolder`, and nowhere without one.
    Application(WaveDevices& devices, const ProgramFolder& folder,
                const std::optional<std::filesystem::path>& recoveryFolder = std::nullopt);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    CMainFrame& Frame() { return frame_; }
    Workspace& Sounds() { return workspace_; }
    const Workspace& Sounds() const { return workspace_; }
    HelpDesk& Help() { return help_; }
    EditorScripts& Scripts() { return scripts_; }

    // Paths are file texts (platform/qt/file_names.h).

    // The files of the command line. What went wrong with those that cannot be opened, a line each;
    // messages of the others, and the offer to import what Open refuses, come once the frame is
    // shown.
    QStringList OpenAtStart(const QStringList& absolutePaths);
    void Show();

    // Files that are open already are brought to the front. Those that Open refuses and Import
    // reads are offered for import, in one box for all. Of several failures the last one is
    // returned; its reason names the file.
    Outcome OpenFiles(const QStringList& absolutePaths);
    Outcome OpenFile(const QString& absolutePath) { return OpenFiles({absolutePath}); }

    // --- What the application's commands do

    Outcome NewSound();
    Outcome Open();    // files that are chosen in a dialog
    Outcome Import();  // likewise
    bool HasModifiedSounds() const;
    Outcome SaveAll();
    Outcome RunScript();
    Outcome CopyAsScript();
    void ShowFileProperties();
    void EditPreferences();
    void ShowSampleDatabase();
    void ShowAbout();
    void Exit();
    // Asks nothing: what is unsaved stays in the recovery folder, recordings included.
    void LeaveAtOnce();

  private:
    EffectHost MakeEffectHost();
    void AddActions();
    void ConnectFrame();
    void TakeSettings();
    void LimitRecovery();
    void RunLogo();
    void KeepWork(const std::filesystem::path& folder);
    void OfferWhatWasLeft();
    // Empty when the dialog was cancelled.
    QStringList AskForFiles(const QString& title, const QString& filters);
    // Without an offer to import.
    Outcome OpenPlainly(const QString& absolutePath);
    Outcome OpenPlainlyOrName(const QString& absolutePath);
    void ShowWhatWasHeld();

    LogoSound logoSound_;
    QtPrompts prompts_;
    QtProgressFactory progress_;
    QtWaveClipboard clipboard_{ImageOf16Bits};
    ChildCodecs codecs_;
    CMainFrame frame_;
    std::unique_ptr<recovery::WorkKeeper> keeper_;  // null where no work is kept
    Workspace workspace_;
    SoundImporter importer_;
    EffectState effectState_;
    EditorScripts scripts_{workspace_, codecs_, effectState_, &frame_};
    EffectMemory effectMemory_;
    EffectCommands effectCommands_;
    std::unique_ptr<CommandTarget> commands_;
    std::unique_ptr<CatalogueWindow> catalogue_;
    QTimer faultTimer_;
    std::optional<EndSignals> endSignals_;
    HelpDesk help_;
    QStringList heldMessages_;
    std::vector<RefusedFile> heldRefusals_;
};

}  // namespace sonavel
