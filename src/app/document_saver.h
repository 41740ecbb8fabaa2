// Saving a document from its window, with the dialog "Save As" where a path has to be chosen.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include "workspace/workspace.h"

namespace sonavel {

class DocumentSaver {
  public:
    // Of the workspace's active document, so that it is the one in sight; the dialog stands over
    // `parent`.
    DocumentSaver(Workspace& workspace, CSoundDoc& document, QWidget* parent)
        : workspace_(workspace), document_(document), parent_(parent) {}

    // Under the document's own path, or as SaveAs() when it has none, and also when only the
    // beginning of the sound would be written there. What else the file will not hold is said in
    // the status bar before it is written.
    Outcome Save();
    Outcome SaveAs();
    // What the file holds now takes the place of the sound, and the history goes.
    Outcome ReadAgain() { return document_.ReadAgain(); }
    bool CanReadAgain() const { return document_.File() && !document_.GetModified(); }
    // What the status bar says when the window gets the keyboard; empty when nothing has happened
    // to the file.
    QString WordOnFile() const;

  private:
    Workspace& workspace_;
    CSoundDoc& document_;
    QPointer<QWidget> parent_;
};

}  // namespace sonavel
