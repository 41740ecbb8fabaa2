// The dialog "Clipboard Contents": what the clipboard holds, and a button that plays it.
#pragma once

#include "view/commands/view_questions.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class ClipboardContentsDialog : public FormDialog {
    Q_OBJECT

  public:
    // Stops the preview when it closes.
    ClipboardContentsDialog(const ClipboardContents& contents, ClipboardPreview& preview,
                            QWidget* parent = nullptr);
    void done(int result) override;

  private:
    ClipboardPreview& preview_;
};

}  // namespace sonavel
