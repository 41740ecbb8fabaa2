// The dialog "Pitch": in semitones, or in percent of the frequency.
#pragma once

#include "effects/ui/plain_effect_dialog.h"

namespace sonavel {

class CPitchDlg : public PlainEffectDialog {
    Q_OBJECT

  public:
    explicit CPitchDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    void TakePercent();
    void ShowPercent();

    QDoubleSpinBox* percent_;
    bool taking_ = false;
};

}  // namespace sonavel
