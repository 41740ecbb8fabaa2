// The dialog "Tempo": in percent, or to a length that is typed.
#pragma once

#include <QLineEdit>
#include <optional>

#include "effects/ui/plain_effect_dialog.h"

namespace sonavel {

class CTempoDlg : public PlainEffectDialog {
    Q_OBJECT

  public:
    explicit CTempoDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

    // The tempo that gives exactly the length that was typed last.
    std::vector<double> Values() const override;
    // Stays open on a length that the range cannot have.
    void accept() override;

  private:
    void AddLengths();
    QString LengthText(double frames) const;
    // The tempo in percent; nothing for what is no length, or none that can be reached.
    std::optional<double> TempoOfTyped() const;
    void TakeTyped();
    void ShowLength();

    QLineEdit* length_;
    std::optional<double> exact_;
    // What was typed last is no length to be had.
    bool isRefused_ = false;
    bool taking_ = false;
};

}  // namespace sonavel
