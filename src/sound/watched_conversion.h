// What a sound becomes with other bits and channels, computed in pieces that say how far they are.
#pragma once

#include "sound/sample_pieces.h"
#include "sound/sound.h"

namespace sonavel {

// As Converted() of sound.h; cancelled when the watch stops it.
Result<Sound> Converted(const Sound& sound, unsigned channels, ChannelChoice choice, unsigned bits,
                        const PieceWatch& watch);

}  // namespace sonavel
