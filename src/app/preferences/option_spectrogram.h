// The page "Spectrogram" of the preferences.
#pragma once

#include "app/preferences/option_page.h"

namespace sonavel {

class COptionSpectrogram : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionSpectrogram(QWidget* parent = nullptr);

  private:
    QWidget* MakeView();
    QWidget* MakeLook();
};

}  // namespace sonavel
