// What the person can do with the sounds of the open catalogue.
#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QUrl>
#include <algorithm>

#include "catalogue/ui/catalogue_window.h"
#include "platform/qt/file_names.h"
#include "platform/qt/open_files_dialog.h"
#include "platform/qt/person_settings.h"
#include "platform/qt/utf8_text.h"
#include "platform/settings.h"
#include "sound/file_formats.h"
#include "sound/foreign_extensions.h"

namespace sonavel {

namespace {

constexpr const char* kFolderKey = "Sample File Database/Folder";

// In small letters and in capitals.
QString SoundFileFilter() {
    QStringList patterns;
    const auto add = [&patterns](std::string_view extension) {
        const QString pattern = QStringLiteral("*") + Utf8Text(extension);
        patterns << pattern << pattern.toUpper();
    };
    for (const FileFormat& format : FileFormats()) std::ranges::for_each(format.extensions, add);
    std::ranges::for_each(ForeignExtensions(), add);
    return CatalogueWindow::tr("Sound Files (%1)").arg(patterns.join(u' '));
}

QString LastFolder() {
    return PersonSettings().value(kFolderKey, QDir::homePath()).toString();
}

QString NameOf(const QString& path) {
    return ShownFileText(path.section(u'/', -1));
}

}  // namespace

void CatalogueWindow::AddFiles() {
    const QStringList paths =
        OpenFilesDialog::Ask(tr("Add Sound Files"), LastFolder(), SoundFileFilter(), this);
    if (paths.isEmpty()) return;
    PersonSettings().setValue(kFolderKey, QFileInfo(paths.front()).absolutePath());
    AddPaths(paths);
}

void CatalogueWindow::AddFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Add Folder"), LastFolder());
    if (folder.isEmpty()) return;
    PersonSettings().setValue(kFolderKey, folder);
    AddPaths({folder});
}

void CatalogueWindow::AddPaths(const QStringList& paths) {
    // The progress window lets other events in.
    if (adding_ || paths.isEmpty() || !EnsureCatalogue()) return;
    adding_ = true;
    std::vector<std::filesystem::path> files;
    for (const QString& path : paths) files.push_back(FilePath(path));
    const AddedSamples result =
        AddSamples(keeper_.Current(), files, services_.codecs, services_.progress);
    adding_ = false;
    AfterAdding(result);
}

void CatalogueWindow::AfterAdding(const AddedSamples& result) {
    if (result.added > 0) {
        keeper_.MarkChanged();
        model_.EntriesChanged();
    }
    UpdateActions();
    QStringList parts{tr("%1 added").arg(result.added)};
    if (result.known > 0) parts << tr("%1 there already").arg(result.known);
    if (result.cancelled) parts << tr("cancelled");
    if (result.unreadable > 0)
        parts << tr("%1 cannot be read (%2)")
                     .arg(result.unreadable)
                     .arg(Utf8Text(result.firstFailure));
    const QString text = parts.join(QStringLiteral(", "));
    if (result.unreadable > 0)
        status_->ShowError(text);
    else
        status_->ShowNote(text);
}

void CatalogueWindow::RemoveSelected() {
    const std::vector<std::size_t> entries = table_->SelectedEntries();
    if (entries.empty() || adding_) return;
    const QString question =
        entries.size() == 1 ? tr("Take \"%1\" off the catalogue? The file itself is kept.")
                                  .arg(NameOf(PathOf(entries.front())))
                            : tr("Take %1 sounds off the catalogue? The files themselves are kept.")
                                  .arg(entries.size());
    if (!services_.prompts.AskYesNo(question.toStdString(), "Sample File Database")) return;
    const int row = table_->currentIndex().row();
    table_->clearSelection();
    table_->setCurrentIndex({});
    keeper_.Remove(entries);
    model_.EntriesChanged();
    if (model_.rowCount() > 0)
        table_->setCurrentIndex(model_.index(std::clamp(row, 0, model_.rowCount() - 1), 0));
    status_->ShowNote(tr("%1 removed").arg(entries.size()));
    UpdateActions();
}

QString CatalogueWindow::PathOf(std::size_t entry) {
    return FileText(keeper_.Current().At(entry).path);
}

void CatalogueWindow::PlayOrStop() {
    if (preview_.IsPlaying()) return preview_.Stop();
    PlayCurrent();
}

// With "Auto Play" on, a sound is heard as its row is chosen.
void CatalogueWindow::PlayAsChosen() {
    if (StoredNumber(services_.folder.Options().Read(), SettingId::kAutoPlay) != 1) return;
    preview_.Stop();
    PlayCurrent();
}

void CatalogueWindow::PlayCurrent() {
    const std::optional<std::size_t> entry = table_->CurrentEntry();
    if (!entry) return;
    const std::string path = keeper_.Current().At(*entry).path;
    const Outcome playing = preview_.Play(path, services_.folder);
    const QString name = NameOf(FileText(path));
    if (playing) status_->ShowNote(tr("Playing %1").arg(name));
    status_->TellOf(name, playing);
    UpdateActions();
}

void CatalogueWindow::OpenSelected() {
    preview_.Stop();
    for (const std::size_t entry : table_->SelectedEntries()) {
        const QString path = PathOf(entry);
        if (!openSound_(path))
            status_->ShowError(tr("%1 cannot be opened.").arg(ShownFileText(path)));
    }
}

void CatalogueWindow::ShowFolder() {
    const std::optional<std::size_t> entry = table_->CurrentEntry();
    if (!entry) return;
    const std::filesystem::path folder = FilePath(PathOf(*entry)).parent_path();
    std::error_code error;
    if (!std::filesystem::exists(folder, error) || !QDesktopServices::openUrl(FileUrl(folder)))
        status_->ShowError(tr("%1 cannot be shown.").arg(ShownFileText(FileText(folder))));
}

void CatalogueWindow::Locate() {
    const std::optional<std::size_t> entry = table_->CurrentEntry();
    if (!entry) return;
    const QFileInfo before(PathOf(*entry));
    const QString from = before.dir().exists() ? before.absolutePath() : LastFolder();
    const QString path = OpenFilesDialog::AskOne(tr("Locate %1").arg(NameOf(PathOf(*entry))), from,
                                                 SoundFileFilter(), this);
    if (!path.isEmpty()) LocateAt(path);
}

void CatalogueWindow::LocateAt(const QString& path) {
    const std::optional<std::size_t> entry = table_->CurrentEntry();
    if (!entry || keeper_.Current().At(*entry).presence != FilePresence::kMissing) return;
    const Result<std::size_t> found =
        LocateSample(keeper_.Current(), *entry, FilePath(path), services_.codecs);
    if (!found) return status_->ShowError(Utf8Text(found.Reason()));
    PersonSettings().setValue(kFolderKey, QFileInfo(path).absolutePath());
    keeper_.MarkChanged();
    model_.EntriesChanged();
    status_->ShowNote(tr("%1 found again").arg(*found));
    UpdateActions();
}

void CatalogueWindow::CheckAgain() {
    status_->ShowNote({});
    if (keeper_.IsOpen()) keeper_.CheckFiles(Probing::kAlways);
}

void CatalogueWindow::EditFields() {
    bool accepted = false;
    const QString names = QInputDialog::getText(
        this, tr("Fields"), tr("Names of the fields, separated by commas:"), QLineEdit::Normal,
        Utf8Text(JoinFieldNames(keeper_.Store().FieldNames())), &accepted);
    if (accepted) DefineFields(names);
}

void CatalogueWindow::DefineFields(const QString& names) {
    const std::vector<std::string> fields = FieldNamesFrom(names.toStdString());
    if (const Outcome saved = keeper_.Save(); !saved) return status_->Tell(saved);
    if (const Outcome named = keeper_.Store().SetFieldNames(fields); !named)
        return status_->Tell(named);
    Reload();
}

}  // namespace sonavel
