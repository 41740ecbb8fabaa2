// Samples of a sound as shares of full scale, which is 1, interleaved; and back, rounded.
#pragma once

#include <cstdint>
#include <span>

#include "sound/sound.h"

namespace sonavel {

// Reads whole frames from startFrame on; 0 beyond the end of the data.
void ReadShares(const Sound& sound, std::uint32_t startFrame, std::span<float> shares);
// Of one channel alone.
void ReadChannelShares(const Sound& sound, unsigned channel, std::uint32_t startFrame,
                       std::span<float> shares);

// Writes whole frames from startFrame on: whole numbers as the nearest ones, held at full scale;
// floats as they are, also beyond it. What is no number becomes silence, and frames beyond the end
// of the data are left out.
void WriteShares(Sound& sound, std::uint32_t startFrame, std::span<const float> shares);
// Of one channel alone.
void WriteChannelShares(Sound& sound, unsigned channel, std::uint32_t startFrame,
                        std::span<const float> shares);

}  // namespace sonavel
