#include "app/keys_dialog.h"

#include <utility>

namespace sonavel {

namespace {

constexpr QSize kKeysSize{620, 520};

}  // namespace

KeysDialog::KeysDialog(std::vector<KeyRow> rows, const ChangedKeys& keys, QWidget* parent)
    : FormDialog(tr("Keys"), parent), page_(new KeysPage(std::move(rows), this)) {
    SetSizing(Sizing::kFree);
    page_->SetKeys(keys);
    page_->layout()->setContentsMargins(0, 0, 0, 0);
    Body().addWidget(page_);
    resize(kKeysSize);
}

}  // namespace sonavel
