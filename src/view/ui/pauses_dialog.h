// The dialog "Find Pauses", which shows what it finds as flags before OK.
#pragma once

#include <QComboBox>
#include <QTimer>

#include "view/commands/label_commands.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class PausesDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit PausesDialog(CSoundView& view, QWidget* parent = nullptr);

  protected:
    void accept() override;

  private:
    QDoubleSpinBox* AddSeconds(QFormLayout& form, const QString& label, double seconds);
    void Show();

    CSoundView& view_;
    PauseProposal proposal_;
    QDoubleSpinBox* threshold_;
    QDoubleSpinBox* pause_ = nullptr;
    QDoubleSpinBox* sound_ = nullptr;
    QComboBox* marks_;
    QLabel* found_;
    QTimer delay_;
};

}  // namespace sonavel
