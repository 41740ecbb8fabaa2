// The flanger's delay as it sweeps over time.
#pragma once

#include "effects/flanger.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

class FlangerPicture : public PlotWidget {
    Q_OBJECT

  public:
    FlangerPicture(std::uint32_t samplesPerSecond, QWidget* parent);
    void SetParameters(const FlangerParameters& parameters);
    // The delay in milliseconds, `seconds` after the start of a run.
    double DelayMsAt(double seconds) const;

  protected:
    void DrawPicture(QPainter& painter) const override;

  private:
    std::uint32_t samplesPerSecond_;
    FlangerParameters parameters_;
};

}  // namespace sonavel
