// The page "General" of the preferences.
#pragma once

#include "app/preferences/option_page.h"

namespace sonavel {

class COptionGeneral : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionGeneral(QWidget* parent = nullptr);

  private:
    QWidget* MakeOpening();
    QWidget* MakeDocument();
    QWidget* MakeView();
    QWidget* MakeStatus();
    QWidget* MakeMeter();
};

}  // namespace sonavel
