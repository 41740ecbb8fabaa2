// Runs the effects that make a range anew on documents: undo step, progress window, and what takes
// the place of the range, with its markers.
#pragma once

#include <span>

#include "effects/effect_table.h"
#include "platform/outcome.h"

namespace sonavel {

// Both as ApplyEffect() and PreviewEffect(), for rows that have such a function.
Outcome ApplyRangeEffect(const Effect& effect, const EffectTarget& target,
                         std::span<const double> values);
Outcome PreviewRangeEffect(const Effect& effect, const EffectTarget& target,
                           std::span<const double> values, CSoundDoc::PreviewPlay play);

}  // namespace sonavel
