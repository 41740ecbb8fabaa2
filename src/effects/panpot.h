// Panpot and crossfade: one channel of a stereo sound is lowered, by a fixed or a moving position
// between -100 (left) and 100 (right).
#pragma once

#include "effects/effect_processor.h"

namespace sonavel {

enum class PanMode { kPan = 0, kCrossfade = 1 };

// Values: the mode; of pan, the position in tenths; of crossfade, first and last position in
// tenths, and 0 for a straight curve, 1 for an exponential one.
std::unique_ptr<EffectProcessor> MakePanpot(std::span<const double> values, const EffectRun& run);

}  // namespace sonavel
