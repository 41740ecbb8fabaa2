// What another run of the editor left unsaved, and what is to become of each.
#pragma once

#include <QComboBox>
#include <QPixmap>
#include <QPushButton>
#include <QTreeWidget>
#include <vector>

#include "view/ui/form_dialog.h"

namespace sonavel {

struct LeftWorkRow {
    QPixmap waveform;  // null for none
    QString name;
    QString path;  // as a person reads it; empty for none
    QString time;  // of the last change
    QString length;
    unsigned edits = 0;
    bool isReadable = true;  // else it can only be discarded
};

enum class LeftWorkChoice { kRecover, kDiscard, kLater };

// Enter recovers all, Escape leaves all for later.
class LeftWorkDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit LeftWorkDialog(const std::vector<LeftWorkRow>& rows, QWidget* parent = nullptr);

    // One a row; all kLater when the dialog was cancelled.
    std::vector<LeftWorkChoice> Choices() const;

  private:
    void AddRow(const LeftWorkRow& row);
    void AddButtonsForAll();
    void ChooseForAll(LeftWorkChoice choice);

    QTreeWidget* list_;
    std::vector<QComboBox*> choices_;
};

}  // namespace sonavel
