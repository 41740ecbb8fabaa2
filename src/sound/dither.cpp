#include "sound/dither.h"

#include <algorithm>
#include <cmath>

namespace sonavel {
namespace {

constexpr std::uint64_t kSeed = 0x536F6E6176656C31;
constexpr double kUnits = 32768;

// A mixing of all bits (Steele, Lea and Flood, "Fast Splittable Pseudorandom Number Generators",
// 2014).
std::uint64_t Mixed(std::uint64_t value) {
    value = (value ^ value >> 30) * 0xBF58476D1CE4E5B9;
    value = (value ^ value >> 27) * 0x94D049BB133111EB;
    return value ^ value >> 31;
}

std::int16_t Held(double units) {
    // Not a number compares false both times and would stay.
    if (std::isnan(units)) return 0;
    return static_cast<std::int16_t>(std::lrint(std::clamp(units, -32768.0, 32767.0)));
}

}  // namespace

bool FitIn16Bits(std::span<const float> samples) {
    return std::ranges::all_of(samples, [](float sample) {
        const double units = sample * kUnits;
        return units >= -32768 && units <= 32767 && units == std::nearbyint(units);
    });
}

double DitherNoise(std::uint64_t sampleNumber) {
    const std::uint64_t bits = Mixed(kSeed + (sampleNumber + 1) * 0x9E3779B97F4A7C15);
    // The sum of two even distributions is a triangular one.
    const auto first = static_cast<double>(bits >> 32),
               second = static_cast<double>(bits & 0xFFFFFFFF);
    return (first - second) * 0x1p-32;
}

void DitherTo16Bits(std::span<const float> from, std::uint64_t firstSampleNumber,
                    std::span<std::int16_t> to) {
    for (std::size_t i = 0; i < from.size(); ++i)
        to[i] = Held(from[i] * kUnits + DitherNoise(firstSampleNumber + i));
}

void RoundTo16Bits(std::span<const float> from, std::span<std::int16_t> to) {
    std::ranges::transform(from, to.begin(), [](float sample) { return Held(sample * kUnits); });
}

}  // namespace sonavel
