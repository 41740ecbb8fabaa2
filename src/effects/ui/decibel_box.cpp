#include "effects/ui/decibel_box.h"

#include "effects/volume.h"
#include "sound/decibels.h"

namespace sonavel {

namespace {

// Below half a percent; it stands for silence.
constexpr double kLowestDecibels = -60;

double DecibelsOf(double percent) {
    return LevelInDecibels(percent, 100).value_or(kLowestDecibels);
}

}  // namespace

DecibelBox::DecibelBox(ParameterControl& percent, QWidget* parent)
    : QDoubleSpinBox(parent), percent_(percent) {
    setPalette(ProgramPalette());
    setLocale(QLocale::c());
    setAlignment(Qt::AlignRight);
    setDecimals(2);
    setRange(kLowestDecibels, DecibelsOf(percent.Parameter().greatest));
    setSpecialValueText(QStringLiteral("-inf"));
    setAccessibleName(QStringLiteral("dB"));
    setToolTip(tr("The same in decibels; 6 dB doubles the level."));
    ShowPercent();
    connect(this, &QDoubleSpinBox::valueChanged, this, &DecibelBox::TakeTyped);
    connect(this, &QDoubleSpinBox::editingFinished, this, &DecibelBox::ShowPercent);
    connect(&percent, &ParameterControl::Changed, this, [this] {
        if (!taking_) ShowPercent();
    });
}

void DecibelBox::TakeTyped() {
    taking_ = true;
    percent_.SetValue(VolumePercent(value()));
    taking_ = false;
}

void DecibelBox::ShowPercent() {
    setValue(DecibelsOf(percent_.Value()));
}

}  // namespace sonavel
