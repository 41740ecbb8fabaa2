// The dialog of an effect that needs no picture: a line for each parameter, made from the row.
#pragma once

#include "effects/ui/effect_dialog.h"

namespace sonavel {

class PlainEffectDialog : public EffectDialog {
    Q_OBJECT

  public:
    PlainEffectDialog(const EffectDialogContext& context, const Effect& effect,
                      QWidget* parent = nullptr);

  private:
    // The first widget that can be moved to by the keys.
    QWidget* AddLines();
};

}  // namespace sonavel
