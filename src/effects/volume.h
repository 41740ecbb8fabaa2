// Volume: every sample times a percentage.
#pragma once

#include <optional>
#include <span>

#include "effects/effect_processor.h"
#include "view/draw/block_extremes.h"

namespace sonavel {

inline constexpr int kGreatestVolumePercent = 300;

// What becomes of values beyond full scale: stored, they wrap to the other sign, or they are held
// at the ends.
enum class Overload { kWrap, kHold };

struct VolumeParameters {
    int percent = 100;  // 0 to kGreatestVolumePercent
    Overload overload = Overload::kWrap;
};

// Scales in place, in single precision; `bits` is the width of the sound's samples.
void ScaleVolume(std::span<float> samples, const VolumeParameters& parameters, unsigned bits);

// Values: percent; 0 or 1 to hold.
std::unique_ptr<EffectProcessor> MakeVolume(std::span<const double> values, const EffectRun& run);

// The nearest percentage, 0 to kGreatestVolumePercent.
int VolumePercent(double decibels);

// The least percentage that takes samples with these extremes beyond full scale; nothing when none
// up to kGreatestVolumePercent does.
std::optional<int> FirstTooLoudPercent(const SampleExtremes& extremes, unsigned bits);

}  // namespace sonavel
