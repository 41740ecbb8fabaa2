// The dialog "Graphic EQ".
#pragma once

#include <QGridLayout>

#include "effects/ui/effect_dialog.h"
#include "effects/ui/equalizer_picture.h"

namespace sonavel {

class CGraphicEqDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CGraphicEqDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    QSlider* AddBand(QGridLayout& grid, int band, const char* frequency);
    void NumberBand(QSlider& slider, int number);
    void ShowResponse();

    EqualizerPicture* picture_;
};

}  // namespace sonavel
