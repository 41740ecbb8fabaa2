// A percentage typed as decibels.
#pragma once

#include <QDoubleSpinBox>

#include "effects/ui/parameter_control.h"

namespace sonavel {

// Shows 100 % as 0 dB and follows the parameter; what is typed moves the parameter to the nearest
// percentage. The text is left alone while it is being typed.
class DecibelBox : public QDoubleSpinBox {
  public:
    DecibelBox(ParameterControl& percent, QWidget* parent);

  private:
    void TakeTyped();
    void ShowPercent();

    ParameterControl& percent_;
    bool taking_ = false;
};

}  // namespace sonavel
