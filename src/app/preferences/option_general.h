// The page "General" of the preferences.
#pragma once

#include <QComboBox>

#include "app/preferences/option_page.h"

namespace sonavel {

class COptionGeneral : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionGeneral(QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;

  private:
    QWidget* MakeGroup(const QString& title, std::span<const FlagText> flags);
    QWidget* MakeStatus();
    QWidget* MakeMeter();

    FlagBoxes flags_;
    QComboBox* statusFormat_;
    QComboBox* meterScale_;
};

}  // namespace sonavel
