#include "effects/ui/flanger_picture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sonavel {

namespace {

constexpr double kSeconds = 5;
constexpr double kGreatestMs = 15;
constexpr QSize kSize{440, 160};

}  // namespace

FlangerPicture::FlangerPicture(std::uint32_t samplesPerSecond, QWidget* parent)
    : PlotWidget({0, kSeconds, PlotAxis::Scale::kLinear, {0, 1, 2, 3, 4, 5}, "s"},
                 {0, kGreatestMs, PlotAxis::Scale::kLinear, {0, 5, 10, 15}, "ms"}, kSize, parent),
      samplesPerSecond_(std::max(samplesPerSecond, 1u)) {}

void FlangerPicture::SetParameters(const FlangerParameters& parameters) {
    parameters_ = parameters;
    update();
}

double FlangerPicture::DelayMsAt(double seconds) const {
    // The sweep's greatest delay is a whole number of frames.
    const double frames = FlangerMaxDelay(parameters_, samplesPerSecond_);
    const double turns = seconds * parameters_.modulationTenths * 0.1;
    const double share = (1 - std::cos(2 * std::numbers::pi * turns)) / 2;
    return share * frames * 1000 / samplesPerSecond_;
}

void FlangerPicture::DrawPicture(QPainter& painter) const {
    DrawCurve(
        painter, [this](double seconds) { return DelayMsAt(seconds); }, kSeconds);
}

}  // namespace sonavel
