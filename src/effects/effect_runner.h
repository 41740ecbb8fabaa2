// Runs effects on documents: what an effect's row says of ranges, memory, the undo step, progress,
// cancelling and the way of its result is done here for all of them.
#pragma once

#include <span>

#include "effects/effect_table.h"
#include "platform/outcome.h"
#include "sound/frame_range.h"
#include "view/sound_view.h"

namespace sonavel {

using PreviewPlay = CSoundDoc::PreviewPlay;

// The frames that effects work on there.
FrameRange RangeOf(const EffectTarget& target);

// Both take one value for each parameter, in the table's order and inside its range.
//
// As OK in the dialog does, or also where OK changes nothing: a mono sound then takes what a stereo
// sound's left channel would. One undo step; the preview, which no longer fits, is emptied.
enum class Applying { kAsOk, kAlways };
Outcome ApplyEffect(const Effect& effect, const EffectTarget& target,
                    std::span<const double> values, Applying applying = Applying::kAsOk);
// On the view's selection, which then covers what became of it.
Outcome ApplyEffectTo(CSoundView& view, EffectState& state, const Effect& effect,
                      std::span<const double> values, Applying applying = Applying::kAsOk);
// Into the document's preview sound; for effects that have one.
Outcome PreviewEffect(const Effect& effect, const EffectTarget& target,
                      std::span<const double> values, PreviewPlay play);

// Learns a noise from the target's frames and keeps it in its state.
Outcome LearnNoiseFrom(const EffectTarget& target);

}  // namespace sonavel
