// Triangular noise of one unit for the rounding of floats to whole numbers, so that what is quieter
// than a unit is still heard (Lipshitz, Wannamaker and Vanderkooy, "Quantization and Dither", JAES
// 1992).
#pragma once

#include <cstdint>

namespace sonavel {

// The noise of a sample, more than -1 and less than 1 unit, which depends on nothing but its
// number: pieces may be dithered in any order.
double DitherNoise(std::uint64_t sampleNumber);

}  // namespace sonavel
