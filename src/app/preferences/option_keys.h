// The page "Keys" of the preferences.
#pragma once

#include <vector>

#include "app/keys_page.h"
#include "app/preferences/option_page.h"

namespace sonavel {

class COptionKeys : public OptionPage {
    Q_OBJECT

  public:
    explicit COptionKeys(std::vector<KeyRow> commands, QWidget* parent = nullptr);

    void ShowPreferences(const Preferences& preferences) override;
    void TakeInto(Preferences& preferences) const override;

  private:
    KeysPage* keys_;
};

}  // namespace sonavel
