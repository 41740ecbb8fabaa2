// Scripts in the editor: one from a file is run on the open sounds, and what it printed is shown.
#pragma once

#include <QPlainTextEdit>
#include <QPointer>
#include <QWidget>
#include <filesystem>

#include "script/open_sounds_run.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

// What a script printed while it ran.
class ScriptOutputDialog : public FormDialog {
    Q_OBJECT

  public:
    ScriptOutputDialog(const QString& summary, const QString& printed, QWidget* parent = nullptr);
};

class EditorScripts {
  public:
    // All of it lives longer; the dialogs stand over `window`.
    EditorScripts(Workspace& sounds, const ChildCodecs& codecs, const EffectState& effects,
                  QWidget* window)
        : sounds_(sounds), codecs_(codecs), effects_(effects), window_(window) {}

    // Asks for the file.
    Outcome AskAndRun();
    // Puts what was done to the active sound since it was opened on the clipboard, as a script.
    Outcome CopySteps();
    // Says what came of it; what went wrong is shown in a box of its own.
    Outcome RunFile(const std::filesystem::path& path);

  private:
    void ShowDone(const script::OpenSoundsRun& run);
    void ShowFailed(const script::OpenSoundsRun& run);

    Workspace& sounds_;
    const ChildCodecs& codecs_;
    const EffectState& effects_;
    QPointer<QWidget> window_;
};

}  // namespace sonavel
