// The 80-bit extended precision of IEEE 754, big-endian, in which AIFF files hold their sample
// rate.
#pragma once

#include <array>
#include <cstdint>

namespace sonavel {

using ExtendedFloat = std::array<std::uint8_t, 10>;

// The value rounded to double precision; infinities and NaN stay what they are.
double DoubleFromExtended(const ExtendedFloat& bytes);
ExtendedFloat ExtendedFromInteger(std::uint32_t value);

}  // namespace sonavel
