#include "spatial/ui/preset_name_dialog.h"

#include <QRegularExpressionValidator>

namespace sonavel {
namespace {

constexpr int kLongestName = 100;

}  // namespace

PresetNameDialog::PresetNameDialog(const QString& title, const QString& proposed, QWidget* parent)
    : FormDialog(title, parent), name_(new QLineEdit(this)) {
    name_->setMaxLength(kLongestName);
    name_->setMinimumWidth(300);
    // Names stand between brackets in the file.
    static const QRegularExpression kAllowed(QStringLiteral("[^\\[\\]\\x00-\\x1f]*"));
    name_->setValidator(new QRegularExpressionValidator(kAllowed, name_));
    auto* prompt = new QLabel(tr("Enter the name of the preset"), this);
    prompt->setBuddy(name_);
    Body().addWidget(prompt);
    Body().addWidget(name_);
    connect(name_, &QLineEdit::textChanged, this, [this] { SetOkEnabled(!Name().isEmpty()); });
    name_->setText(proposed);
    name_->selectAll();
    name_->setFocus();
    SetOkEnabled(!Name().isEmpty());
}

}  // namespace sonavel
