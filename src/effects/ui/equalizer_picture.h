// The summed frequency response of the equalizer's bands and the dry sound.
#pragma once

#include "effects/equalizer.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

// How much the filters raise a sine of this frequency, before the peak is restored. In decibels.
double EqualizerGainDb(const EqualizerParameters& parameters, double hertz,
                       std::uint32_t samplesPerSecond);

class EqualizerPicture : public PlotWidget {
    Q_OBJECT

  public:
    EqualizerPicture(std::uint32_t samplesPerSecond, QWidget* parent);
    void SetParameters(const EqualizerParameters& parameters);

  protected:
    void DrawPicture(QPainter& painter) const override;

  private:
    std::uint32_t samplesPerSecond_;
    EqualizerParameters parameters_;
};

}  // namespace sonavel
