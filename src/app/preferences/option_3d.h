// The page "3D" of the preferences: with whose ears smooth sources are heard.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "app/preferences/option_page.h"

namespace sonavel {

class COption3D : public OptionPage {
    Q_OBJECT

  public:
    explicit COption3D(QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;

  private:
    QLayout* MakeFileRow();
    void Browse();
    void ShowState();

    QRadioButton* table_;
    QRadioButton* file_;
    QLineEdit* path_;
    QLabel* state_;
};

}  // namespace sonavel
