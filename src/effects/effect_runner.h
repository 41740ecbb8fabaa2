// Runs effects on documents: what an effect's row says of ranges, memory, the undo step, progress,
// cancelling and the way of its result is done here for all of them.
#pragma once

#include <span>

#include "effects/effect_table.h"
#include "platform/outcome.h"
#include "sound/frame_range.h"

namespace sonavel {

using PreviewPlay = CSoundDoc::PreviewPlay;

// The frames that effects work on there.
FrameRange RangeOf(const EffectTarget& target);

// Both take one value for each parameter, in the table's order and inside its range.
//
// As OK in the dialog does: one undo step; the preview, which no longer fits, is emptied.
Outcome ApplyEffect(const Effect& effect, const EffectTarget& target,
                    std::span<const double> values);
// Into the document's preview sound; for effects that have one.
Outcome PreviewEffect(const Effect& effect, const EffectTarget& target,
                      std::span<const double> values, PreviewPlay play);

}  // namespace sonavel
