// Asks where the loudspeakers stand.
#pragma once

#include "view/ui/form_dialog.h"

namespace sonavel {

class CrosstalkDialog : public FormDialog {
    Q_OBJECT

  public:
    CrosstalkDialog(double angle, const QString& ears, QWidget* parent);

    double Angle() const { return angle_->value(); }

  private:
    QDoubleSpinBox* angle_;
};

}  // namespace sonavel
