// The document's dialogs as Qt windows.
#pragma once

#include <QPointer>
#include <QWidget>

#include "app/save_as_dialog.h"
#include "platform/program_folder.h"

namespace sonavel {

class QtDocumentDialogs : public DocumentDialogs {
  public:
    QtDocumentDialogs(QWidget* parent, const ProgramFolder& folder)
        : parent_(parent), folder_(folder) {}

    // Asked while the Save As dialog is open, about what it shows.
    void SetSaveNotice(SaveNoticeSource notice) { notice_ = std::move(notice); }
    // The folder of the document that is saved; empty while it has none, and the one used last then
    // comes first.
    void SetDocumentFolder(std::function<QString()> folder) { documentFolder_ = std::move(folder); }

    std::optional<NewSoundChoice> AskNewSound(const NewSoundChoice& initial) override;
    std::optional<SaveAsChoice> AskSaveAs(const SaveAsRequest& request) override;

  private:
    QPointer<QWidget> parent_;
    const ProgramFolder& folder_;
    SaveNoticeSource notice_;
    std::function<QString()> documentFolder_;
};

}  // namespace sonavel
