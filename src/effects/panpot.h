// Panpot and crossfade: one channel of a stereo sound is lowered, by a fixed or a moving position
// between -100 (left) and 100 (right).
#pragma once

#include "effects/effect_processor.h"

namespace sonavel {

// The two rows that share one dialog.
enum class PanMode { kPan = 0, kCrossfade = 1 };

// Value: the position in tenths.
std::unique_ptr<EffectProcessor> MakePan(std::span<const double> values, const EffectRun& run);
// Values: first and last position in tenths; 0 for a straight curve, 1 for an exponential one.
std::unique_ptr<EffectProcessor> MakeCrossfade(std::span<const double> values,
                                               const EffectRun& run);

}  // namespace sonavel
