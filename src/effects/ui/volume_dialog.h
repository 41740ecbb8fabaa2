// The dialog "Volume".
#pragma once

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class VolumeDialog : public EffectDialog {
    Q_OBJECT

  public:
    explicit VolumeDialog(const EffectDialogContext& context, QWidget* parent = nullptr);
};

}  // namespace sonavel
