#include "app/preferences/option_page.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <algorithm>
#include <limits>

#include "platform/qt/utf8_text.h"

namespace sonavel {

NumberField::NumberField(SettingId setting, int step, const QString& unit, QWidget* parent)
    : QWidget(parent),
      setting_(RowOf(setting)),
      number_(new QSpinBox(this)),
      refusal_(
          new FieldHint(tr("Only %1 to %2").arg(setting_.least).arg(setting_.greatest), this)) {
    number_->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    number_->setSingleStep(step);
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

void OptionPage::ShowPreferences(const Preferences& preferences) {
    for (const SettingControl& control : controls_)
        control.show(preferences.settings[control.setting]);
}

void OptionPage::TakeInto(Preferences& preferences) const {
    for (const SettingControl& control : controls_)
        preferences.settings[control.setting] = control.number();
}

bool OptionPage::IsValid() const {
    const auto fields = findChildren<NumberField*>();
    return std::ranges::all_of(fields, &NumberField::IsValid);
}

void OptionPage::AddControl(SettingControl control) {
    control.widget->setToolTip(Utf8Text(RowOf(control.setting).explanation));
    controls_.push_back(std::move(control));
}

void OptionPage::AddFlag(QBoxLayout& layout, SettingId setting, const QString& text) {
    auto* box = new QCheckBox(text);
    layout.addWidget(box);
    connect(box, &QCheckBox::toggled, this, &OptionPage::Edited);
    AddControl({setting, box, [box](int number) { box->setChecked(number != 0); },
                [box] { return box->isChecked() ? 1 : 0; }});
}

QComboBox* OptionPage::AddChoice(SettingId setting, const QStringList& names) {
    auto* box = new QComboBox(this);
    box->addItems(names);
    connect(box, &QComboBox::currentIndexChanged, this, &OptionPage::Edited);
    AddControl({setting, box, [box](int number) { box->setCurrentIndex(number); },
                [box] { return box->currentIndex(); }});
    return box;
}

NumberField* OptionPage::AddNumber(SettingId setting, int step, const QString& unit) {
    auto* field = new NumberField(setting, step, unit, this);
    connect(field, &NumberField::Edited, this, &OptionPage::Edited);
    AddControl({setting, field, [field](int number) { field->SetValue(number); },
                [field] { return field->Value(); }});
    return field;
}

}  // namespace sonavel
