// The gain curve that the modulator's two oscillators form.
#pragma once

#include "effects/modulator.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

// The gain `seconds` after the start of a run; -1 to 1.
double ModulatorGain(const ModulatorParameters& parameters, std::uint32_t samplesPerSecond,
                     double seconds);

class ModulatorPicture : public PlotWidget {
    Q_OBJECT

  public:
    ModulatorPicture(std::uint32_t samplesPerSecond, QWidget* parent);
    void SetParameters(const ModulatorParameters& parameters);

  protected:
    void DrawPicture(QPainter& painter) const override;

  private:
    std::uint32_t samplesPerSecond_;
    ModulatorParameters parameters_;
};

}  // namespace sonavel
