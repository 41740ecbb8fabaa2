// The page "Grid" of the preferences.
#pragma once

#include "app/preferences/option_page.h"
#include "app/preferences/sound_preview.h"

namespace sonavel {

class COptionGrid : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionGrid(QWidget* parent = nullptr);

    void ShowPreview(const Preferences& preferences) override;

  private:
    QWidget* MakeItems();
    QWidget* MakeForm();

    SoundPreview* preview_;
};

}  // namespace sonavel
