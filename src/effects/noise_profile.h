// What a noise sounds like, learned from a stretch of a sound that holds nothing else; and the
// short transforms that it is learned and reduced with.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "effects/range_effect.h"
#include "sound/fft.h"

namespace sonavel {

// A transform's window, and how far the next one lies behind it.
inline constexpr std::uint32_t kNoiseWindow = kFftSize;
inline constexpr std::uint32_t kNoiseHop = kFftSize / 4;
inline constexpr std::size_t kNoiseBins = kFftSize / 2 + 1;

using NoiseBins = std::array<float, kNoiseBins>;

struct NoiseProfile {
    std::uint32_t samplesPerSecond = 0;
    std::vector<NoiseBins> channels;  // the mean power of each bin
};

// The square root of the raised cosine, which is put on before the transform and again behind the
// one back.
const std::array<float, kFftSize>& NoiseWindow();

// The spectrum of the window's frames, shares of full scale of one channel.
void TransformWindow(std::span<const float, kFftSize> frames, Spectrum& spectrum);
// The power of each bin.
void PowerOf(const Spectrum& spectrum, NoiseBins& power);

// One channel's shares of the range from `first` on, which may lie before it; silence outside.
void ReadAround(const RangeWork& work, unsigned channel, std::int64_t first,
                std::span<float> shares);

// Fails for a range shorter than a window.
Result<NoiseProfile> LearnNoise(const RangeWork& work);

}  // namespace sonavel
