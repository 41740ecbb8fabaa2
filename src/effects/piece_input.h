// The frames of a range as a processor is given them: its piece, and before it as much of the sound
// as the processor's history is long.
#pragma once

#include <cstdint>

#include "effects/effect_table.h"
#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

struct PieceInput {
    const EffectTraits& traits;
    const Sound& sound;
    FrameRange range;
    std::uint32_t historyFrames;

    // Fills the piece's channels from `firstSlot` on, which have room for its history too; slots
    // that the sound has no channel for get its last one. What lies before the range is silent.
    void Load(const EffectPiece& piece, unsigned firstSlot, unsigned slots) const;
    // How much of a piece's history lies before the range.
    std::uint32_t SilentFrames(const EffectPiece& piece) const;
};

}  // namespace sonavel
