#include "effects/ui/parameter_control.h"

#include <algorithm>
#include <cmath>

namespace sonavel {

ParameterControl::ParameterControl(const EffectParameter& parameter, Direction direction,
                                   QWidget* dialog)
    : QObject(dialog),
      parameter_(parameter),
      direction_(direction),
      dialog_(dialog),
      scale_(std::pow(10.0, std::max(parameter.decimals, 0))),
      units_(UnitsOf(parameter.start)) {}

int ParameterControl::UnitsOf(double value) const {
    return static_cast<int>(std::lround(value * scale_));
}

void ParameterControl::TakeUnits(double units) {
    const double least = UnitsOf(parameter_.least);
    const double greatest = UnitsOf(parameter_.greatest);
    const auto taken = static_cast<int>(std::lround(std::clamp(units, least, greatest)));
    if (taken == units_) return;
    units_ = taken;
    Q_EMIT Changed();
}

int ParameterControl::SliderPosition(int units) const {
    if (direction_ == Direction::kWithValue) return units;
    return UnitsOf(parameter_.least) + UnitsOf(parameter_.greatest) - units;
}

void ParameterControl::Explain(QWidget& widget) const {
    QString name = QString::fromUtf8(parameter_.label);
    widget.setAccessibleName(name.remove(u':').trimmed());
    if (!parameter_.explanation) return;
    QString sentence = QString::fromUtf8(parameter_.explanation) + u'.';
    sentence[0] = sentence[0].toUpper();
    widget.setToolTip(sentence);
}

void ParameterControl::Bind(QAbstractSlider& slider) {
    // First of all, as what speaks of the slider is chosen by it.
    if (direction_ == Direction::kAgainstValue) {
        slider.setInvertedAppearance(true);
        slider.setInvertedControls(true);
    }
    slider.setRange(UnitsOf(parameter_.least), UnitsOf(parameter_.greatest));
    slider.setSingleStep(UnitsOf(parameter_.step));
    slider.setPageStep(10 * slider.singleStep());
    Explain(slider);
    slider.setValue(SliderPosition(units_));
    // A position is its own mirror image.
    connect(&slider, &QAbstractSlider::valueChanged, this,
            [this](int position) { TakeUnits(SliderPosition(position)); });
    connect(this, &ParameterControl::Changed, &slider,
            [this, &slider] { slider.setValue(SliderPosition(units_)); });
}

QSlider* ParameterControl::MakeSlider(Qt::Orientation orientation) {
    auto* slider = new EffectSlider(orientation, dialog_);
    Bind(*slider);
    return slider;
}

FocusScrollBar* ParameterControl::MakeScrollBar() {
    auto* bar = new FocusScrollBar(dialog_);
    Bind(*bar);
    return bar;
}

QDoubleSpinBox* ParameterControl::MakeSpinBox() {
    auto* box = new QDoubleSpinBox(dialog_);
    box->setPalette(ProgramPalette());
    box->setLocale(QLocale::c());
    box->setAlignment(Qt::AlignRight);
    Explain(*box);
    box->setDecimals(parameter_.decimals);
    box->setRange(parameter_.least, parameter_.greatest);
    box->setSingleStep(parameter_.step);
    box->setValue(Value());
    connect(box, &QDoubleSpinBox::valueChanged, this, &ParameterControl::SetValue);
    connect(this, &ParameterControl::Changed, box, [this, box] { box->setValue(Value()); });
    return box;
}

QCheckBox* ParameterControl::MakeCheckBox(const QString& text) {
    auto* box = new QCheckBox(text, dialog_);
    box->setChecked(units_ != 0);
    Explain(*box);
    connect(box, &QCheckBox::toggled, this, [this](bool on) { SetValue(on ? 1 : 0); });
    connect(this, &ParameterControl::Changed, box, [this, box] { box->setChecked(units_ != 0); });
    return box;
}

QRadioButton* ParameterControl::MakeRadioButton(const QString& text, double value) {
    auto* button = new QRadioButton(text, dialog_);
    button->setChecked(Value() == value);
    connect(button, &QRadioButton::toggled, this, [this, value](bool on) {
        if (on) SetValue(value);
    });
    connect(this, &ParameterControl::Changed, button, [this, button, value] {
        if (Value() == value) button->setChecked(true);
    });
    return button;
}

ValueLabel* ParameterControl::MakeValueLabel(const Format& format) {
    auto* label = new ValueLabel(dialog_);
    label->setText(format(Value()));
    label->ReserveFor({format(parameter_.least), format(parameter_.greatest)});
    connect(this, &ParameterControl::Changed, label,
            [this, label, format] { label->setText(format(Value())); });
    return label;
}

QLabel* ParameterControl::MakeNameLabel(QWidget* buddy) {
    auto* label = new QLabel(QString::fromUtf8(parameter_.label), dialog_);
    label->setBuddy(buddy);
    return label;
}

QLabel* ParameterControl::MakeUnitLabel() {
    return new QLabel(QString::fromUtf8(parameter_.unit), dialog_);
}

}  // namespace sonavel
