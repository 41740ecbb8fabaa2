#include "app/document_saver.h"

#include <QFileInfo>

#include "app/recent_folders.h"
#include "app/save_as_dialog.h"
#include "app/save_notice.h"
#include "platform/qt/file_names.h"
#include "platform/qt/utf8_text.h"

namespace sonavel {

Outcome DocumentSaver::Save() {
    if (document_.Path().empty()) return SaveAs();
    // The dialog says so before it happens, and asks before the whole sound's file is replaced.
    if (document_.SaveCutsSound(document_.Path())) return SaveAs();
    using enum CSoundDoc::OtherWriters;
    CSoundDoc::OtherWriters others = kAskAbout;
    if (document_.StateOfFile() == FileState::kChanged) {
        const ChangedFileAnswer answer = document_.Services().prompts.AskChangedFile();
        if (answer == ChangedFileAnswer::kCancel) return Cancelled();
        if (answer == ChangedFileAnswer::kSaveAs) return SaveAs();
        others = kAccepted;
    }
    const std::string warning = document_.SaveWarning(document_.Path());
    if (!warning.empty()) document_.Services().prompts.ShowStatus(warning);
    return document_.SaveDocument(document_.Path(), others);
}

QString DocumentSaver::WordOnFile() const {
    const QString name = Utf8Text(document_.Title());
    switch (document_.StateOfFile()) {
        case FileState::kChanged:
            return (CanReadAgain()
                        ? QObject::tr("%1 was changed by another program. File > Read Again shows "
                                      "what it holds now.")
                        : QObject::tr("%1 was changed by another program."))
                .arg(name);
        case FileState::kGone:
            return QObject::tr("The file of %1 was moved or deleted.").arg(name);
        case FileState::kNone:
        case FileState::kAsItWas:
            break;
    }
    return {};
}

Outcome DocumentSaver::SaveAs() {
    RecentFolders recent(document_.Services().folder);
    QStringList folders;
    for (const std::string& path : recent.Paths()) folders << QString::fromStdString(path);
    const auto notice = [this](const SaveAsChoice& choice) {
        return NoticeOfSave(workspace_, choice);
    };
    SaveAsDialog dialog(document_.QuestionOfSaveAs(), folders, notice, parent_);
    // While the document has no folder, the one used last comes first.
    QString folder = FileText(document_.Path().parent_path());
    if (folder.isEmpty() && !folders.isEmpty()) folder = folders.front();
    if (QFileInfo(folder).isDir()) dialog.ShowFolder(folder);
    if (dialog.exec() != QDialog::Accepted) return Cancelled();
    const SaveAsChoice choice = dialog.Choice();
    recent.Add(choice.path.parent_path().string());
    return document_.SaveAs(choice);
}

}  // namespace sonavel
