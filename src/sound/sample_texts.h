// How the value of one sample is shown.
#pragma once

#include <cstdint>
#include <string>

#include "sound/sound.h"

namespace sonavel {

// "-32768": a whole number as CWave::GetSample gives it; of a float its share of full scale with so
// many decimals.
std::string SampleText(const Sound& sound, unsigned channel, std::uint32_t frame, int decimals);

}  // namespace sonavel
