#include "sound/dither.h"

namespace sonavel {
namespace {

constexpr std::uint64_t kSeed = 0x536F6E6176656C31;

// A mixing of all bits (Steele, Lea and Flood, "Fast Splittable Pseudorandom Number Generators",
// 2014).
std::uint64_t Mixed(std::uint64_t value) {
    value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
    value = (value ^ value >> 27) * 0x94D049BB133111EB;
    return value ^ value >> 31;
}

}  // namespace

double DitherNoise(std::uint64_t sampleNumber) {
    const std::uint64_t bits = Mixed(kSeed + (sampleNumber + 1) * 0x9E3779B97F4A7C15);
    // The sum of two even distributions is a triangular one.
    const auto first = static_cast<double>(bits >> 32),
               second = static_cast<double>(bits & 0xFFFFFFFF);
    return (first - second) * 0x1p-32;
}

}  // namespace sonavel
