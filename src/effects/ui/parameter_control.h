// One parameter of an effect while its dialog is open: the value, and the widgets that show and
// change it. Whichever of them the person moves, the others follow.
#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QObject>
#include <QRadioButton>
#include <QSlider>
#include <functional>

#include "effects/effect_table.h"
#include "effects/ui/effect_look.h"

namespace sonavel {

class ParameterControl : public QObject {
    Q_OBJECT

  public:
    // Whether a slider's positions count up with the value, or down from its top end.
    enum class Direction { kWithValue, kAgainstValue };
    using Format = std::function<QString(double value)>;

    ParameterControl(const EffectParameter& parameter, Direction direction, QWidget* dialog);

    const EffectParameter& Parameter() const { return parameter_; }
    double Value() const { return units_ / scale_; }
    int WholeValue() const { return qRound(Value()); }
    // Outside the range, the nearest value inside it.
    void SetValue(double value) { TakeUnits(value * scale_); }
    void Reset() { SetValue(parameter_.start); }

    // Widgets that belong to the dialog and that it lays out. Positions of sliders and bars are the
    // value in its last shown decimal.
    QSlider* MakeSlider(Qt::Orientation orientation);
    FocusScrollBar* MakeScrollBar();
    QDoubleSpinBox* MakeSpinBox();
    // Its name for screen readers and what it does as a tool tip; every control made here has them.
    void Explain(QWidget& widget) const;
    QCheckBox* MakeCheckBox(const QString& text);
    // Checked while the value is this one.
    QRadioButton* MakeRadioButton(const QString& text, double value);
    ValueLabel* MakeValueLabel(const Format& format);
    // The parameter's label, which leads to the widget.
    QLabel* MakeNameLabel(QWidget* buddy);
    QLabel* MakeUnitLabel();

  Q_SIGNALS:
    void Changed();

  private:
    void Bind(QAbstractSlider& slider);
    int SliderPosition(int units) const;
    int UnitsOf(double value) const;
    void TakeUnits(double units);

    const EffectParameter& parameter_;
    Direction direction_;
    QWidget* dialog_;
    double scale_;  // units in 1
    int units_;
};

}  // namespace sonavel
