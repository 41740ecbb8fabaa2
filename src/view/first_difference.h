// Where two states of a sound begin to differ.
#pragma once

#include <cstdint>

#include "sound/wave.h"

namespace sonavel {

// The first frame whose bytes differ, or the length of the shorter sound where one begins with the
// other; 0 for different formats.
std::uint32_t FirstDifferentFrame(const SoundCopy& before, const CWave& after);

}  // namespace sonavel
