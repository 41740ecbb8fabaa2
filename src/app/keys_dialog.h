// The dialog "Keys", the short way to that page of the preferences.
#pragma once

#include <vector>

#include "app/keys_page.h"
#include "view/ui/form_dialog.h"

namespace sonavel {

class KeysDialog : public FormDialog {
    Q_OBJECT

  public:
    KeysDialog(std::vector<KeyRow> rows, const ChangedKeys& keys, QWidget* parent = nullptr);
    const ChangedKeys& Keys() const { return page_->Keys(); }

  private:
    KeysPage* page_;
};

}  // namespace sonavel
