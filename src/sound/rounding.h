// Fewer bits for a sound, with a choice of how the rest is rounded.
#pragma once

#include <cstdint>

#include "platform/outcome.h"
#include "sound/sample_pieces.h"
#include "sound/sound.h"

namespace sonavel {

enum class Rounding : std::uint8_t {
    kDithered,  // by triangular noise, unless every sample fits
    kPlain,     // of whole numbers as ConvertBits() does, of floats to the nearest
};

// The sound with that many bits, 8, 16 or 32, which may also be more than it has; markers are kept.
// Fails when the memory cannot be had; cancelled when the watch stops it.
Result<Sound> Rounded(const Sound& sound, unsigned bits, Rounding rounding,
                      const PieceWatch& watch = Unwatched);

}  // namespace sonavel
