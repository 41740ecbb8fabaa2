#include "app/preferences/option_keys.h"

#include <utility>

namespace sonavel {

COptionKeys::COptionKeys(std::vector<KeyRow> commands, QWidget* parent)
    : OptionPage(parent), keys_(new KeysPage(std::move(commands), this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(keys_);
    connect(keys_, &KeysPage::Edited, this, &OptionPage::Edited);
}

void COptionKeys::ShowPreferences(const Preferences& preferences) {
    keys_->SetKeys(preferences.keys);
}

void COptionKeys::TakeInto(Preferences& preferences) const {
    preferences.keys = keys_->Keys();
}

}  // namespace sonavel
