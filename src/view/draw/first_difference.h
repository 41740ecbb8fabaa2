// Where two states of a sound begin to differ.
#pragma once

#include <cstdint>

#include "sound/sound.h"

namespace sonavel {

// Where the first marker that differs stands, after the change unless it was removed; 0 for equal
// lists.
std::uint32_t FirstDifferentFrame(const MarkerList& before, const MarkerList& after);

// The first frame whose bytes differ, or the length of the shorter sound where one begins with the
// other; 0 for different formats.
std::uint32_t FirstDifferentFrame(const Sound& before, const Sound& after);

}  // namespace sonavel
