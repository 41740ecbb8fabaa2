// The dialog "Modulator": two oscillators.
#pragma once

#include "effects/ui/effect_dialog.h"
#include "effects/ui/modulator_picture.h"

namespace sonavel {

class CModulatorDlg : public EffectDialog {
    Q_OBJECT

  public:
    explicit CModulatorDlg(const EffectDialogContext& context, QWidget* parent = nullptr);

  private:
    // Its controls begin at `first`. Returns the frequency bar.
    QScrollBar* AddOscillator(const QString& title, std::size_t first);
    OscillatorParameters Oscillator(std::size_t first) const;
    void ShowGain();

    ModulatorPicture* picture_;
};

}  // namespace sonavel
