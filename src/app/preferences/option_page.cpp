#include "app/preferences/option_page.h"

#include <QHBoxLayout>
#include <limits>

namespace sonavel {

void FlagBoxes::Add(QVBoxLayout& column, std::span<const FlagText> flags, OptionPage& page) {
    for (const FlagText& flag : flags) {
        auto* box = new QCheckBox(QString::fromUtf8(flag.text));
        column.addWidget(box);
        QObject::connect(box, &QCheckBox::toggled, &page, &OptionPage::Edited);
        boxes_.push_back({box, flag.value});
    }
}

void FlagBoxes::Show(Preferences preferences) {
    for (const Box& box : boxes_) box.box->setChecked(box.value(preferences) != 0);
}

void FlagBoxes::TakeInto(Preferences& preferences) const {
    for (const Box& box : boxes_) box.value(preferences) = box.box->isChecked() ? 1 : 0;
}

NumberField::NumberField(const NumberRange& range, const QString& unit, QWidget* parent)
    : QWidget(parent),
      range_(range),
      number_(new QSpinBox(this)),
      refusal_(new FieldHint(tr("Only %1 to %2").arg(range.lowest).arg(range.highest), this)) {
    number_->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    number_->setSingleStep(range.step);
    number_->setAlignment(Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(number_);
    row->addWidget(new QLabel(unit, this));
    row->addWidget(refusal_);
    row->addStretch(1);
    setFocusProxy(number_);
    connect(number_, &QSpinBox::valueChanged, this, [this] {
        refusal_->SetShown(!IsValid());
        Q_EMIT Edited();
    });
}

bool NumberField::IsValid() const {
    return Value() >= range_.lowest && Value() <= range_.highest;
}

}  // namespace sonavel
