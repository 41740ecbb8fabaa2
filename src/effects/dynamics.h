// Dynamics: a static transfer curve of two segments. It acts on each sample alone, without an
// envelope.
#pragma once

#include <span>

namespace sonavel {

struct DynamicsCurve {
    float threshold = 1;  // a fraction of 16-bit full scale, also for 8-bit sounds
    float below = 1;      // gain at and below the threshold
    float above = 1;      // gain above it

    // From what the dialog shows: percent, and ratios to 1.
    static DynamicsCurve FromDialog(double thresholdPercent, double belowRatio, double aboveRatio);
};

struct DynamicsParameters {
    DynamicsCurve left;
    DynamicsCurve right;  // used for stereo sounds
};

// In place; results lie within +-32767.
void ApplyCurve(std::span<float> samples, const DynamicsCurve& curve);

}  // namespace sonavel
