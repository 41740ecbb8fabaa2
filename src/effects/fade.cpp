#include "effects/fade.h"

#include <cmath>
#include <numbers>

namespace sonavel {
namespace {

constexpr double kLogarithmicDecades = 3;  // of amplitude: 60 dB

enum class FadeDirection { kIn, kOut };

Outcome Fade(const RangeWork& work, RangeSink& sink, FadeDirection direction) {
    const auto curve = static_cast<FadeCurve>(std::lround(work.values[0]));
    const unsigned channels = work.Channels();
    const double last = work.Frames() > 1 ? work.Frames() - 1 : 1;
    return ChangePieces(work, sink, Cancel::kIgnored, [=](const RangePiece& piece) {
        for (std::size_t i = 0; i < piece.shares.size(); i += channels) {
            const std::size_t frame = i / channels;
            const double way = (piece.first + static_cast<double>(frame)) / last;
            const auto gain = static_cast<float>(
                FadeGain(curve, direction == FadeDirection::kIn ? way : 1 - way));
            for (unsigned channel = 0; channel < channels; ++channel)
                piece.shares[i + channel] *= gain;
        }
    });
}

}  // namespace

double FadeGain(FadeCurve curve, double share) {
    if (share <= 0) return 0;
    if (share >= 1) return 1;
    switch (curve) {
        case FadeCurve::kSmooth:
            return 0.5 - 0.5 * std::cos(std::numbers::pi * share);
        case FadeCurve::kLogarithmic:
            return std::pow(10.0, kLogarithmicDecades * (share - 1));
        default:
            return share;
    }
}

Outcome FadeIn(const RangeWork& work, RangeSink& sink) {
    return Fade(work, sink, FadeDirection::kIn);
}

Outcome FadeOut(const RangeWork& work, RangeSink& sink) {
    return Fade(work, sink, FadeDirection::kOut);
}

}  // namespace sonavel
