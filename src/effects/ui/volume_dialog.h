// The dialog "Volume".
#pragma once

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class CVolumeDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CVolumeDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    static constexpr std::size_t kPercent = 0;
    static constexpr std::size_t kHold = 1;

    // The value to be typed, in percent and in decibels.
    void AddFields();
};

}  // namespace sonavel
