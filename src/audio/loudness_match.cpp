#include "audio/loudness_match.h"

#include <algorithm>
#include <cmath>

namespace sonavel {
namespace {

// The window of momentary loudness (ITU-R BS.1771). Both means move with the sound, so that their
// ratio is steadier than either.
constexpr double kMeanSeconds = 0.4;
constexpr double kSilence = 1e-10;  // of the mean square
constexpr double kGreatestGain = 16;

double MeanSquareOf(std::span<const float> values) {
    double sum = 0;
    for (const float value : values) sum += double{value} * value;
    return values.empty() ? 0 : sum / static_cast<double>(values.size());
}

}  // namespace

LoudnessMatch::LoudnessMatch(double pieceSeconds)
    : share_(1 - std::exp(-pieceSeconds / kMeanSeconds)) {}

void LoudnessMatch::Hear(std::span<const float> untouched, std::span<const float> changed) {
    ++heard_;
    const double share = std::max(share_, 1 / heard_);
    untouched_ += share * (MeanSquareOf(untouched) - untouched_);
    changed_ += share * (MeanSquareOf(changed) - changed_);
}

float LoudnessMatch::GainOfUntouched() const {
    if (untouched_ < kSilence || changed_ < kSilence) return 1;
    return static_cast<float>(
        std::clamp(std::sqrt(changed_ / untouched_), 1 / kGreatestGain, kGreatestGain));
}

}  // namespace sonavel
