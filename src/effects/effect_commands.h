// The effects on a document: which range each takes, how it runs there, and how its result comes
// back. One pair of functions stands behind each row of the effect table.
#pragma once

#include "effects/dynamics.h"
#include "effects/effect_table.h"
#include "effects/equalizer.h"
#include "effects/flanger.h"
#include "effects/modulator.h"
#include "effects/panpot.h"
#include "effects/reverb.h"
#include "effects/volume.h"

namespace sonavel {

// Each returns false when nothing was done; the document's last error says why.
bool ApplyVolume(const EffectTarget& target, const VolumeParameters& parameters);
bool PreviewVolume(const EffectTarget& target, const VolumeParameters& parameters,
                   PreviewPlay play);
bool ApplyPanpot(const EffectTarget& target, const PanpotParameters& parameters);
bool ApplyModulator(const EffectTarget& target, const ModulatorParameters& parameters);
bool ApplyDynamics(const EffectTarget& target, const DynamicsParameters& parameters);
bool ApplyFlanger(const EffectTarget& target, const FlangerParameters& parameters);
bool PreviewFlanger(const EffectTarget& target, const FlangerParameters& parameters,
                    PreviewPlay play);
bool ApplyReverb(const EffectTarget& target, const ReverbParameters& parameters);
bool PreviewReverb(const EffectTarget& target, const ReverbParameters& parameters,
                   PreviewPlay play);
// OK in the equalizer changes nothing: its result is only heard, and kept through the preview.
bool PreviewEqualizer(const EffectTarget& target, const EqualizerParameters& parameters,
                      PreviewPlay play);

}  // namespace sonavel
