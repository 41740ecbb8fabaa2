// The room's answer to one impulse: its early taps as stems, and how the rest dies away.
#pragma once

#include <vector>

#include "effects/reverb_taps.h"
#include "effects/ui/plot_widget.h"

namespace sonavel {

// The wet response to a single sample of 1, for `seconds`; one value a frame.
std::vector<float> ReverbResponse(const ReverbParameters& parameters,
                                  std::uint32_t samplesPerSecond, double seconds);

class ReverbPicture : public PlotWidget {
    Q_OBJECT

  public:
    ReverbPicture(std::uint32_t samplesPerSecond, QWidget* parent);
    void SetParameters(const ReverbParameters& parameters);

  protected:
    void DrawPicture(QPainter& painter) const override;

  private:
    void Compute() const;
    void DrawDecay(QPainter& painter) const;
    void DrawTaps(QPainter& painter) const;
    double LevelDb(std::size_t firstFrame, std::size_t endFrame) const;
    void DrawStem(QPainter& painter, double ms, double db) const;

    std::uint32_t samplesPerSecond_;
    ReverbParameters parameters_;
    // Made when it is drawn, so that a dragged bar costs one run a repaint.
    mutable std::vector<float> response_;
};

}  // namespace sonavel
