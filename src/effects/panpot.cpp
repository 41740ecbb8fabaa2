#include "effects/panpot.h"

#include <array>
#include <cmath>

namespace sonavel {
namespace {

constexpr float kPercent = 0.01f;
constexpr double kExponentScale = 0.04587155963302752;  // 1 / 21.8

void Lower(std::span<float> channel, float share) {
    for (float& sample : channel) sample = sample * share * kPercent;
}

// Lowers the left channel where the position is to the right of the centre, and the other way
// round.
void ApplyLinear(std::span<const float> positions, float* left, float* right) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const float position = positions[i];
        left[i] = position > 0 ? left[i] * (100 - position) * kPercent : left[i];
        right[i] = position < 0 ? right[i] * (position + 100) * kPercent : right[i];
    }
}

// The factor does not reach 1 beside the centre, where nothing is lowered: the curve jumps there.
float ExponentialFactor(float share) {
    return static_cast<float>(std::exp(share * kExponentScale) * 0.01);
}

void ApplyExponential(std::span<const float> positions, float* left, float* right) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const float position = positions[i];
        if (position > 0) left[i] *= ExponentialFactor(100 - position);
        if (position < 0) right[i] *= ExponentialFactor(position + 100);
    }
}

}  // namespace

Panpot::Panpot(const PanpotParameters& parameters, std::uint32_t rangeFrames)
    : parameters_(parameters) {
    // Positions below ten units count as the centre: the division is one of integers.
    const int start = parameters.mode == PanMode::kPan ? parameters.pan / 10 : parameters.from / 10;
    const int end = parameters.to / 10;
    position_ = static_cast<float>(start);
    step_ = rangeFrames ? static_cast<float>(start - end) / static_cast<float>(rangeFrames) : 0;
}

void Panpot::Process(std::span<float> left, std::span<float> right) {
    if (parameters_.mode == PanMode::kPan)
        Pan(left, right);
    else
        Crossfade(left, right);
}

void Panpot::Pan(std::span<float> left, std::span<float> right) const {
    if (position_ > 0) Lower(left, 100 - position_);
    if (position_ < 0) Lower(right, position_ + 100);
}

void Panpot::Crossfade(std::span<float> left, std::span<float> right) {
    std::array<float, kMaxPieceFrames> positions;
    const std::span<float> used = std::span(positions).first(left.size());
    for (float& position : used) {
        position_ -= step_;
        position = position_;
    }
    if (parameters_.law == CrossfadeLaw::kLinear)
        ApplyLinear(used, left.data(), right.data());
    else
        ApplyExponential(used, left.data(), right.data());
}

}  // namespace sonavel
