// Exporting the active sound from its window: whole, as a copy in its own format, or what is
// selected of it. The document stays as it is.
#pragma once

#include <QPointer>
#include <QWidget>
#include <span>
#include <string>

#include "app/exchange/export_dialog.h"
#include "platform/command_table.h"
#include "workspace/workspace.h"

namespace sonavel {

class SoundExporter {
  public:
    // The dialogs stand over `parent`.
    SoundExporter(const Workspace& workspace, OpenSound& sound, QWidget* parent)
        : workspace_(workspace), sound_(sound), parent_(parent) {}

    // In the kind of file that was chosen last.
    Outcome Export();
    // Starts with the kind of file that the sound came from.
    Outcome SaveCopy();
    Outcome ExportSelection();
    // Each region, or each stretch between markers, into a file of its own.
    Outcome ExportRegions();
    // The markers as texts that other programs read, and back.
    Outcome ImportLabels();
    Outcome ExportLabels();
    bool HasMarkers() const;
    bool HasFrames() const;
    bool HasSelection() const;

  private:
    struct Wish {
        QString title;
        SoundFileKind kind;
        std::string nameEnd;  // behind the name of the sound's own file
        FrameRange range;
    };

    FrameRange Whole() const;
    QString LabelFolder() const;
    Outcome Ask(const Wish& wish);
    ExportQuestion QuestionOf(const Wish& wish) const;

    ExportNotice Notice(FrameRange range, const ExportAnswer& answer) const;

    const Workspace& workspace_;
    OpenSound& sound_;
    QPointer<QWidget> parent_;
};

std::span<const Command<SoundExporter>> ExportCommands();

}  // namespace sonavel
