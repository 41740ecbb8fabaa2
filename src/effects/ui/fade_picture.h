// A fade's curve over its range.
#pragma once

#include "effects/fade.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

class FadePicture : public PlotWidget {
    Q_OBJECT

  public:
    enum class Way { kIn, kOut };

    // Over a range of so many seconds, more than none.
    FadePicture(Way way, double seconds, QWidget* parent);
    void SetCurve(FadeCurve curve);
    // The level in percent, `seconds` after the range's start.
    double PercentAt(double seconds) const;

  protected:
    void DrawPicture(QPainter& painter) const override;

  private:
    Way way_;
    FadeCurve curve_ = FadeCurve::kLinear;
};

}  // namespace sonavel
