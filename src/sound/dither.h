// Rounding of floats to 16 bits with triangular noise of one unit, so that what is quieter than a
// unit is still heard (Lipshitz, Wannamaker and Vanderkooy, "Quantization and Dither", JAES 1992).
#pragma once

#include <cstdint>
#include <span>

namespace sonavel {

// Whether 16 bits hold each of the samples, of the nominal range +-1, exactly. A sound of which
// this is true needs no dither.
bool FitIn16Bits(std::span<const float> samples);

// The noise of a sample, more than -1 and less than 1 unit of 16 bits, which depends on nothing but
// its number: pieces may be dithered in any order.
double DitherNoise(std::uint64_t sampleNumber);

// Rounds the samples, of which the first has that number among all of its sound; what lies beyond
// full scale is held there. `to` has room for as many. Each result is the nearest 16-bit value or
// one beside it.
void DitherTo16Bits(std::span<const float> from, std::uint64_t firstSampleNumber,
                    std::span<std::int16_t> to);
// Likewise without noise, for sounds that fit.
void RoundTo16Bits(std::span<const float> from, std::span<std::int16_t> to);

}  // namespace sonavel
