// The dialog "Volume".
#pragma once

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class CVolumeDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CVolumeDlg(const EffectDialogContext& context, QWidget* parent = nullptr);
};

}  // namespace sonavel
