// Dynamics: a static transfer curve of two segments. It acts on each sample alone, without an
// envelope.
#pragma once

#include <span>

#include "effects/effect_processor.h"

namespace sonavel {

struct DynamicsCurve {
    float threshold = 1;  // a fraction of 16-bit full scale, also for 8-bit sounds
    float below = 1;      // gain at and below the threshold
    float above = 1;      // gain above it

    // From what the dialog shows: percent, and ratios to 1.
    static DynamicsCurve FromDialog(double thresholdPercent, double belowRatio, double aboveRatio);
};

// In place; results lie within +-32767.
void ApplyCurve(std::span<float> samples, const DynamicsCurve& curve);

// Values: threshold in percent and the ratios below and above it to 1, of the left and of the right
// channel.
std::unique_ptr<EffectProcessor> MakeDynamics(std::span<const double> values, const EffectRun& run);

}  // namespace sonavel
