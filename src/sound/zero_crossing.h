// Places where a sound can be cut without a click.
#pragma once

#include <cstdint>

#include "sound/sound.h"

namespace sonavel {

// The frame nearest to `frame`, at most `reach` frames away, at which the mean of the channels has
// passed through zero since the frame before; `frame` itself where there is none. The start and the
// end of the sound count as such places.
std::uint32_t NearestZeroCrossing(const Sound& sound, std::uint32_t frame, std::uint32_t reach);

}  // namespace sonavel
