// The dialogs "Fade In" and "Fade Out": the curve, chosen and drawn.
#pragma once

#include "effects/ui/fade_picture.h"
#include "effects/ui/plain_effect_dialog.h"

namespace sonavel {

class CFadeDlg : public PlainEffectDialog {
    Q_OBJECT

  public:
    CFadeDlg(FadePicture::Way way, const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    void ShowCurve();

    FadePicture* picture_;
};

}  // namespace sonavel
