#include "effects/dynamics.h"

#include <algorithm>
#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {

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

}  // namespace sonavel
