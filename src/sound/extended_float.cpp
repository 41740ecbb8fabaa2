#include "sound/extended_float.h"

#include <bit>
#include <cmath>
#include <limits>

#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr int kBias = 16383;
constexpr unsigned kAllExponentBits = 0x7FFF;

double Magnitude(unsigned exponent, std::uint64_t mantissa) {
    if (exponent != kAllExponentBits)
        return std::ldexp(static_cast<double>(mantissa), static_cast<int>(exponent) - kBias - 63);
    // The integer bit is set in both; the fraction alone tells infinity from NaN.
    return mantissa << 1 ? std::numeric_limits<double>::quiet_NaN()
                         : std::numeric_limits<double>::infinity();
}

}  // namespace

double DoubleFromExtended(const ExtendedFloat& bytes) {
    const unsigned head = LoadBig16(bytes.data());
    const double magnitude = Magnitude(head & kAllExponentBits, LoadBig64(&bytes[2]));
    return head & 0x8000 ? -magnitude : magnitude;
}

ExtendedFloat ExtendedFromInteger(std::uint32_t value) {
    ExtendedFloat bytes{};
    if (value == 0) return bytes;
    const int shift = std::countl_zero(value);
    const unsigned exponent = static_cast<unsigned>(kBias + 31 - shift);
    const std::uint32_t mantissa = value << shift;
    bytes[0] = static_cast<std::uint8_t>(exponent >> 8);
    bytes[1] = static_cast<std::uint8_t>(exponent);
    for (unsigned i = 0; i < 4; ++i)
        bytes[2 + i] = static_cast<std::uint8_t>(mantissa >> (24 - 8 * i));
    return bytes;
}

}  // namespace sonavel
