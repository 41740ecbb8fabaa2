#include "effects/ui/modulator_picture.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace sonavel {

namespace {

constexpr double kSeconds = 12;
constexpr QSize kSize{460, 150};
constexpr int kPlacesInAColumn = 24;

double OscillatorGain(const OscillatorParameters& oscillator, std::uint32_t samplesPerSecond,
                      double frame) {
    const std::uint32_t fiftieth = samplesPerSecond / 50;
    if (oscillator.frequency == 0 || oscillator.amplitudePercent == 0 || fiftieth == 0) return 1;
    // Frames of the delay are those of 44100 Hz at every rate, as in the run itself.
    if (frame < std::floor(oscillator.delayMs * 44.1)) return 1;
    const double radiansPerFrame = oscillator.frequency * 0.001 * 6.283184 / fiftieth;
    return -0.01 * oscillator.amplitudePercent * std::sin(frame * radiansPerFrame);
}

}  // namespace

double ModulatorGain(const ModulatorParameters& parameters, std::uint32_t samplesPerSecond,
                     double seconds) {
    const double frame = std::floor(seconds * samplesPerSecond);
    return OscillatorGain(parameters.first, samplesPerSecond, frame) *
           OscillatorGain(parameters.second, samplesPerSecond, frame);
}

ModulatorPicture::ModulatorPicture(std::uint32_t samplesPerSecond, QWidget* parent)
    : PlotWidget(
          {0.01, kSeconds, PlotAxis::Scale::kLogarithmic, {0.01, 0.03, 0.1, 0.3, 1, 3, 10}, "s"},
          {-1.1, 1.1, PlotAxis::Scale::kLinear, {-1, -0.5, 0, 0.5, 1}, ""}, kSize, parent),
      samplesPerSecond_(samplesPerSecond) {}

void ModulatorPicture::SetParameters(const ModulatorParameters& parameters) {
    parameters_ = parameters;
    update();
}

// A column holds more than one period of a fast oscillator, so it is drawn from the least to the
// greatest gain inside it.
void ModulatorPicture::DrawPicture(QPainter& painter) const {
    painter.setPen(QPen(AccentColour(), 1.5));
    const QRectF plane = Plane();
    double before = ModulatorGain(parameters_, samplesPerSecond_, AcrossAt(plane.left()));
    for (double x = plane.left(); x < plane.right(); x += 1) {
        double least = before;
        double greatest = before;
        for (int i = 1; i <= kPlacesInAColumn; ++i) {
            before = ModulatorGain(parameters_, samplesPerSecond_,
                                   AcrossAt(x + static_cast<double>(i) / kPlacesInAColumn));
            least = std::min(least, before);
            greatest = std::max(greatest, before);
        }
        const double across = AcrossAt(x + 0.5);
        painter.drawLine(PointAt(across, least), PointAt(across, greatest) - QPointF(0, 0.5));
    }
}

}  // namespace sonavel
