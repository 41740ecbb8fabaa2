#include "effects/ui/fade_picture.h"

#include <cmath>

namespace sonavel {

namespace {

constexpr QSize kFadeSize{440, 160};
constexpr int kMostSteps = 5;

// Steps of 1, 2 or 5 times a power of ten, five of them at most.
std::vector<double> TicksOver(double seconds) {
    const double decade = std::pow(10, std::floor(std::log10(seconds / kMostSteps)));
    double step = decade;
    for (const double factor : {2.0, 5.0, 10.0})
        if (seconds / step > kMostSteps) step = decade * factor;
    std::vector<double> ticks;
    for (int i = 0; i * step <= seconds * 1.000001; ++i) ticks.push_back(i * step);
    return ticks;
}

}  // namespace

FadePicture::FadePicture(Way way, double seconds, QWidget* parent)
    : PlotWidget({0, seconds, PlotAxis::Scale::kLinear, TicksOver(seconds), "s"},
                 {0, 100, PlotAxis::Scale::kLinear, {0, 25, 50, 75, 100}, "%"}, kFadeSize, parent),
      way_(way) {}

void FadePicture::SetCurve(FadeCurve curve) {
    curve_ = curve;
    update();
}

double FadePicture::PercentAt(double seconds) const {
    const double share = seconds / Across().greatest;
    return 100 * FadeGain(curve_, way_ == Way::kIn ? share : 1 - share);
}

void FadePicture::DrawPicture(QPainter& painter) const {
    DrawCurve(
        painter, [this](double seconds) { return PercentAt(seconds); }, Across().greatest);
}

}  // namespace sonavel
