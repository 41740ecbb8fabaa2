// The page "Grid" of the preferences.
#pragma once

#include <QComboBox>

#include "app/preferences/option_page.h"
#include "app/preferences/sound_preview.h"

namespace sonavel {

class COptionGrid : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionGrid(QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;
    bool IsValid() const override;
    void ShowPreview(const Preferences& preferences) override;

  private:
    QWidget* MakeItems();
    QWidget* MakeForm();

    FlagBoxes items_;
    QComboBox* type_;
    QComboBox* location_;
    NumberField* widthSpacing_;
    NumberField* heightSpacing_;
    SoundPreview* preview_;
};

}  // namespace sonavel
