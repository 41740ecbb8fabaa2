#include "effects/dynamics.h"

#include <cmath>

namespace sonavel {

DynamicsCurve DynamicsCurve::FromDialog(double thresholdPercent, double belowRatio,
                                        double aboveRatio) {
    return {static_cast<float>(thresholdPercent / 100), static_cast<float>(1 / belowRatio),
            static_cast<float>(1 / aboveRatio)};
}

void ApplyCurve(std::span<float> samples, const DynamicsCurve& curve) {
    constexpr float kPerFullScale = 3.0517578125e-05f;
    constexpr float kLimit = 32767.0f;
    const float threshold = curve.threshold;
    const float below = curve.below;
    const float above = curve.above;
    const float knee = below - above;
    for (float& sample : samples) {
        const float x = sample;
        const float sign = x < 0 ? -1.0f : 1.0f;
        const float bent = knee * sign * threshold * 32768 + above * x;
        const float y = std::abs(x) * kPerFullScale > threshold ? bent : below * x;
        sample = std::abs(y) > kLimit ? sign * kLimit : y;
    }
}

}  // namespace sonavel
