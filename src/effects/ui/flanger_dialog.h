// The dialog "Flanger".
#pragma once

#include "effects/ui/effect_dialog.h"
#include "effects/ui/flanger_picture.h"

namespace sonavel {

class CFlangerDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CFlangerDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    void ShowSweep();

    FlangerPicture* picture_;
};

}  // namespace sonavel
