#include "app/qt_document_dialogs.h"

#include <QFileInfo>

#include "app/new_sound_dialog.h"
#include "app/recent_folders.h"

namespace sonavel {

std::optional<NewSoundChoice> QtDocumentDialogs::AskNewSound(const NewSoundChoice& initial) {
    NewSoundDialog dialog(initial, parent_);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice();
}

std::optional<SaveAsChoice> QtDocumentDialogs::AskSaveAs(const SaveAsRequest& request) {
    RecentFolders recent(folder_);
    QStringList folders;
    for (const std::string& path : recent.Paths()) folders << QString::fromStdString(path);
    SaveAsDialog dialog(request, folders, notice_, parent_);
    QString folder = documentFolder_ ? documentFolder_() : QString();
    if (folder.isEmpty() && !folders.isEmpty()) folder = folders.front();
    if (QFileInfo(folder).isDir()) dialog.ShowFolder(folder);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    SaveAsChoice choice = dialog.Choice();
    recent.Add(choice.path.parent_path().string());
    return choice;
}

}  // namespace sonavel
