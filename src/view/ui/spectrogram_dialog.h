// The dialog "Spectrogram": how spectrograms are computed and coloured. What is chosen shows at
// once.
#pragma once

#include "view/state/spectrogram_settings.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class SpectrogramFields;

class SpectrogramDialog : public FormDialog {
    Q_OBJECT

  public:
    explicit SpectrogramDialog(const SpectrogramSettings& initial, QWidget* parent = nullptr);
    SpectrogramSettings Choice() const;

  Q_SIGNALS:
    void Changed();

  private:
    SpectrogramFields* fields_;
};

}  // namespace sonavel
