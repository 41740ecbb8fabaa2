#include "app/preferences/option_page.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <algorithm>
#include <limits>

#include "platform/qt/utf8_text.h"

namespace sonavel {

class NumberField::Box : public QSpinBox {
  public:
    using QSpinBox::QSpinBox;

    void ShowZeroAs(const QString& text) {
        zeroText_ = text;
        const int value = this->value();
        setValue(value + 1);
        setValue(value);
        setMinimumWidth(minimumSizeHint().width() + fontMetrics().horizontalAdvance(text) -
                        fontMetrics().horizontalAdvance(QSpinBox::textFromValue(minimum())));
    }

  protected:
    QString textFromValue(int value) const override {
        return value == 0 && !zeroText_.isEmpty() ? zeroText_ : QSpinBox::textFromValue(value);
    }
    int valueFromText(const QString& text) const override {
        return text == zeroText_ ? 0 : QSpinBox::valueFromText(text);
    }
    QValidator::State validate(QString& text, int& position) const override {
        if (zeroText_.isEmpty() || text.isEmpty() || !zeroText_.startsWith(text))
            return QSpinBox::validate(text, position);
        return text == zeroText_ ? QValidator::Acceptable : QValidator::Intermediate;
    }

  private:
    QString zeroText_;
};

NumberField::NumberField(SettingId setting, int step, const QString& unit, QWidget* parent)
    : QWidget(parent),
      setting_(RowOf(setting)),
      number_(new Box(this)),
      unit_(new QLabel(unit, this)),
      refusal_(
          new FieldHint(tr("Only %1 to %2").arg(setting_.least).arg(setting_.greatest), this)) {
    number_->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    number_->setSingleStep(step);
    number_->setAlignment(Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(number_);
    row->addWidget(unit_);
    row->addWidget(refusal_);
    row->addStretch(1);
    setFocusProxy(number_);
    connect(number_, &QSpinBox::valueChanged, this, [this] {
        refusal_->SetShown(!IsValid());
        ShowUnit();
        Q_EMIT Edited();
    });
}

int NumberField::Value() const {
    return number_->value();
}

void NumberField::SetValue(int value) {
    number_->setValue(value);
}

void NumberField::ShowZeroAs(const QString& text) {
    zeroText_ = text;
    number_->ShowZeroAs(text);
    ShowUnit();
}

void NumberField::ShowUnit() {
    unit_->setVisible(zeroText_.isEmpty() || Value() != 0);
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
