#include "effects/dynamics.h"

#include <algorithm>
#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

class DynamicsProcessor : public EffectProcessor {
  public:
    explicit DynamicsProcessor(const std::array<DynamicsCurve, 2>& curves) : curves_(curves) {}

    void Process(const EffectPiece& piece) override {
        for (std::size_t channel = 0; channel < curves_.size(); ++channel)
            ApplyCurve(piece.channels[channel], curves_[channel]);
    }

  private:
    std::array<DynamicsCurve, 2> curves_;
};

}  // namespace

DynamicsCurve DynamicsCurve::FromDialog(double thresholdPercent, double belowRatio,
                                        double aboveRatio) {
    return {static_cast<float>(thresholdPercent / 100), static_cast<float>(1 / belowRatio),
            static_cast<float>(1 / aboveRatio)};
}

SONAVEL_VECTOR_CLONES
void ApplyCurve(std::span<float> samples, const DynamicsCurve& curve) {
    constexpr float kPerFullScale = 3.0517578125e-05f;
    constexpr float kLimit = 32767.0f;
    const float threshold = curve.threshold;
    const float below = curve.below;
    const float above = curve.above;
    const float knee = below - above;
    for (float& sample : samples) {
        const float x = sample;
        const float bent = knee * std::copysign(1.0f, x) * threshold * 32768 + above * x;
        const float y = std::abs(x) * kPerFullScale > threshold ? bent : below * x;
        // The curve never changes a sample's sign, so this is the sign times the limit.
        sample = std::min(std::max(y, -kLimit), kLimit);
    }
}

std::unique_ptr<EffectProcessor> MakeDynamics(std::span<const double> values, const EffectRun&) {
    return std::make_unique<DynamicsProcessor>(
        std::array{DynamicsCurve::FromDialog(values[0], values[1], values[2]),
                   DynamicsCurve::FromDialog(values[3], values[4], values[5])});
}

}  // namespace sonavel
