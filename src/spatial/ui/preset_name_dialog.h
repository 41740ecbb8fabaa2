// Asks for the name of a preset.
#pragma once

#include <QLineEdit>

#include "view/ui/form_dialog.h"

namespace sonavel {

class PresetNameDialog : public FormDialog {
    Q_OBJECT

  public:
    PresetNameDialog(const QString& title, const QString& proposed, QWidget* parent);

    // Never empty once the dialog was accepted.
    QString Name() const { return name_->text().trimmed(); }

  private:
    QLineEdit* name_;
};

}  // namespace sonavel
