// Graphic equalizer: seven band-pass filters whose outputs are added to the sound.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "effects/effect_processor.h"

namespace sonavel {

inline constexpr int kEqualizerBands = 7;

// One constant-peak-gain band-pass section (R. Bristow-Johnson's form),
// H(z) = g (1 - z^-2) / (1 + a1 z^-1 + a2 z^-2), designed for 44100 Hz and used at every rate.
struct EqualizerSection {
    float g, a1, a2;
};
extern const std::array<EqualizerSection, kEqualizerBands> kEqualizerSections;

struct EqualizerParameters {
    // Slider positions, -400 (top, +40.0 dB) to 400 (bottom, -40.0 dB).
    std::array<int, kEqualizerBands> positions{};
};

// The linear weight of a band: 10^(-position / 200).
float EqualizerWeight(int position);

// The labels of the bands at this rate; empty strings at rates that have none.
std::array<const char*, kEqualizerBands> EqualizerLabels(std::uint32_t samplesPerSecond);

// The filters with their memory. One object lives as long as the program: its states carry over
// from the left channel to the right one and from one run to the next, and so one core computes
// all: every frame begins with what the one before it left.
class EqualizerFilters {
  public:
    // A power of two, for vectors.
    static constexpr int kLanes = 8;

    // y = x + the weighted bands, in single precision and in the order of the bands; in place.
    void Process(std::span<float> samples, const EqualizerParameters& parameters);

  private:
    // w[n-1] and w[n-2] of each band.
    std::array<float, kLanes> previous_{};
    std::array<float, kLanes> beforePrevious_{};
};

// Values: the gain of each band in dB, of one decimal.
std::unique_ptr<EffectProcessor> MakeEqualizer(std::span<const double> values,
                                               const EffectRun& run);

}  // namespace sonavel
