// The dialog "Find Pauses", which shows what it finds as flags before OK.
#pragma once

#include <QComboBox>
#include <QTimer>
#include <optional>

#include "view/commands/label_commands.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class PausesDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit PausesDialog(CSoundView& view, QWidget* parent = nullptr);

    // After OK: does what was shown.
    Outcome Apply();

    // Shows first what was changed last.
    void accept() override;

  private:
    QDoubleSpinBox* AddSeconds(QFormLayout& form, const QString& label, double seconds);
    void Show();
    void ShowMarks();
    void ShowGoing();
    PauseRule Rule() const;
    std::uint32_t Frames(const QDoubleSpinBox& box) const;
    bool Removes() const;

    CSoundView& view_;
    std::optional<PauseProposal> proposal_;
    QDoubleSpinBox* threshold_;
    QDoubleSpinBox* pause_ = nullptr;
    QDoubleSpinBox* sound_ = nullptr;
    QComboBox* marks_;
    QDoubleSpinBox* kept_ = nullptr;
    QLabel* found_;
    QTimer delay_;
};

}  // namespace sonavel
