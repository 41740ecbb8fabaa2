// Duration and pitch of a range, each without the other.
#pragma once

#include "effects/range_effect.h"

namespace sonavel {

// Values: the tempo in percent; 200 halves the duration.
Outcome ChangeTempo(const RangeWork& work, RangeSink& sink);
// To the nearest frame, at least one.
std::uint32_t FramesAtTempo(std::span<const double> values, std::uint32_t frames);

// Values: semitones; 12 is an octave up.
Outcome ChangePitch(const RangeWork& work, RangeSink& sink);

}  // namespace sonavel
