// The dialog "Flanger".
#pragma once

#include "effects/ui/effect_dialog.h"
#include "effects/ui/flanger_picture.h"

namespace sonavel {

class FlangerDialog : public EffectDialog {
    Q_OBJECT

  public:
    explicit FlangerDialog(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    void ShowSweep();

    FlangerPicture* picture_;
};

}  // namespace sonavel
