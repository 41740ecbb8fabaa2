// Fast convolution of blocks with the responses of both ears, by overlap-save: of every 1024 points
// the first 256, which the circular wrap spoils, are dropped.
#pragma once

#include <span>

#include "sound/fft.h"

namespace sonavel {

inline constexpr int kBlockInput = kFftSize;
inline constexpr int kBlockHistory = 256;
inline constexpr int kBlockFrames = kBlockInput - kBlockHistory;  // 768 new frames a block

// The transform of one response of the table, 0 to 360.
void LoadResponseSpectrum(Spectrum& spectrum, int index);

// `input`: the 256 samples before the block and its 768 own. `output`: 768 frames, left first.
void ConvolveBlock(std::span<const float, kBlockInput> input, const Spectrum& left,
                   const Spectrum& right, std::span<float, 2 * kBlockFrames> output);

}  // namespace sonavel
