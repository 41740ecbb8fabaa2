#include "app/exchange/editor_scripts.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>

#include "platform/code_page_949.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "platform/small_file.h"

namespace sonavel {
namespace {

constexpr const char* kScriptFolderKey = "Main Frame/ScriptFolder";
constexpr std::size_t kMostScriptFileBytes = std::size_t{16} << 20;
constexpr QSize kOutputSize{640, 360};

QString ScriptFilters() {
    return QObject::tr("Scripts (*.txt *.sonavel)") + QStringLiteral(";;") +
           QObject::tr("All Files (*)");
}

QString CountOf(std::size_t count, const char* one, const char* several) {
    return count == 1 ? QObject::tr(one) : QObject::tr(several).arg(count);
}

QString SummaryOf(const script::OpenSoundsRun& run) {
    const QString changed =
        run.changedSounds == 0
            ? QObject::tr("no sound was changed")
            : CountOf(run.changedSounds, "a sound was changed", "%1 sounds were changed");
    if (run.newSounds == 0) return QObject::tr("The script has run: %1.").arg(changed);
    return QObject::tr("The script has run: %1, %2.")
        .arg(changed, CountOf(run.newSounds, "a sound was opened", "%1 sounds were opened"));
}

}  // namespace

ScriptOutputDialog::ScriptOutputDialog(const QString& summary, const QString& printed,
                                       QWidget* parent)
    : FormDialog(QObject::tr("Script"), parent, QDialogButtonBox::Close) {
    SetSizing(Sizing::kFree);
    auto* head = new QLabel(summary, this);
    head->setObjectName(QStringLiteral("script summary"));
    head->setTextFormat(Qt::PlainText);
    head->setWordWrap(true);
    Body().addWidget(head);
    auto* text = new QPlainTextEdit(printed, this);
    text->setObjectName(QStringLiteral("script output"));
    text->setAccessibleName(QObject::tr("What the script printed"));
    text->setReadOnly(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Body().addWidget(text, 1);
    resize(kOutputSize);
}

Outcome EditorScripts::AskAndRun() {
    const QString folder = PersonSettings().value(kScriptFolderKey, QDir::currentPath()).toString();
    const QString chosen =
        OpenFilesDialog::AskOne(QObject::tr("Run Script"), folder, ScriptFilters(), window_);
    if (chosen.isEmpty()) return Cancelled();
    PersonSettings().setValue(kScriptFolderKey, QFileInfo(chosen).absolutePath());
    return RunFile(FilePath(chosen));
}

Outcome EditorScripts::CopySteps() {
    OpenSound* active = sounds_.Active();
    if (!active) return Failed("No sound is open.");
    CSoundDoc& document = *active->document;
    document.EndMarkerEdit();
    const std::string text = document.Steps().Text();
    if (text.empty()) return Failed("Nothing was done to the sound since it was opened.");
    const QString title = Utf8Text(DisplayText(document.Title())).simplified();
    QGuiApplication::clipboard()->setText(
        QObject::tr("# What was done to %1 since it was opened").arg(title) + u'\n' +
        Utf8Text(text));
    sounds_.Services().prompts.ShowStatus("The script is on the clipboard.");
    return Done();
}

Outcome EditorScripts::RunFile(const std::filesystem::path& path) {
    auto text = ReadSmallFile(path, kMostScriptFileBytes);
    if (!text) return Failed("The script could not be read.");
    const script::OpenSoundsRun run =
        script::RunOnOpenSounds({*std::move(text), path.parent_path()}, sounds_, codecs_, effects_);
    if (run.outcome)
        ShowDone(run);
    else if (run.outcome.IsFailed())
        ShowFailed(run);
    return run.outcome;
}

void EditorScripts::ShowDone(const script::OpenSoundsRun& run) {
    const QString summary = SummaryOf(run);
    sounds_.Services().prompts.ShowStatus(summary.toStdString());
    if (!run.printed.empty()) ScriptOutputDialog(summary, Utf8Text(run.printed), window_).exec();
}

void EditorScripts::ShowFailed(const script::OpenSoundsRun& run) {
    const std::string summary =
        "The script did not run to its end; the sounds are as they were.\n" + run.outcome.Reason();
    if (run.printed.empty())
        sounds_.Services().prompts.ShowMessage(summary);
    else
        ScriptOutputDialog(Utf8Text(summary), Utf8Text(run.printed), window_).exec();
}

}  // namespace sonavel
