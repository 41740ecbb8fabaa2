#include "effects/ui/equalizer_picture.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace sonavel {

namespace {

constexpr double kLeastHz = 20;
constexpr double kGreatestHz = 20000;
constexpr QSize kSize{480, 180};

}  // namespace

double EqualizerGainDb(const EqualizerParameters& parameters, double hertz,
                       std::uint32_t samplesPerSecond) {
    // The coefficients are the same at every rate, so the response moves with it.
    const double angle = 2 * std::numbers::pi * hertz / samplesPerSecond;
    const std::complex<double> delayed = std::polar(1.0, -angle);
    const std::complex<double> twice = delayed * delayed;
    std::complex<double> sum = 1;
    for (int band = 0; band < kEqualizerBands; ++band) {
        const EqualizerSection& section = kEqualizerSections[band];
        const double peak = EqualizerWeight(parameters.positions[band]) * section.g;
        const double a1 = section.a1;
        const double a2 = section.a2;
        sum += peak * (1.0 - twice) / (1.0 + a1 * delayed + a2 * twice);
    }
    return 20 * std::log10(std::abs(sum));
}

EqualizerPicture::EqualizerPicture(std::uint32_t samplesPerSecond, QWidget* parent)
    : PlotWidget({kLeastHz,
                  kGreatestHz,
                  PlotAxis::Scale::kLogarithmic,
                  {20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000},
                  "Hz"},
                 {-10, 50, PlotAxis::Scale::kLinear, {-10, 0, 10, 20, 30, 40, 50}, "dB"}, kSize,
                 parent),
      samplesPerSecond_(std::max(samplesPerSecond, 1u)) {}

void EqualizerPicture::SetParameters(const EqualizerParameters& parameters) {
    parameters_ = parameters;
    update();
}

void EqualizerPicture::DrawPicture(QPainter& painter) const {
    DrawCurve(
        painter,
        [this](double hertz) { return EqualizerGainDb(parameters_, hertz, samplesPerSecond_); },
        std::min(kGreatestHz, samplesPerSecond_ / 2.0));
}

}  // namespace sonavel
