// Floats made whole numbers: exactly where all of a sound's floats fit, else with triangular
// dither, held at full scale.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "sound/dither.h"
#include "sound/sample_types.h"

namespace sonavel {

// Whether samples of the type hold each float exactly.
template <class To>
bool FloatsFit(std::span<const float> from) {
    return std::ranges::all_of(from, [](float sample) {
        const double value = double{sample} * To::kHalfScale;
        return value >= To::kLeast && value <= To::kGreatest && value == std::nearbyint(value);
    });
}

// The nearest whole number that the type holds, as it is stored.
template <class To>
typename To::Stored RoundedAndHeld(double value) {
    const double held = std::clamp<double>(value, To::kLeast, To::kGreatest);
    return To::StoredOf(static_cast<typename To::Value>(std::lrint(held)));
}

// Takes a sound's floats piece by piece, and gives what it would have given for all of them at
// once: where a float is the first that does not fit, those before it fitted, so that their results
// are the floats still and get their noise then.
class FloatRounder {
  public:
    // The results so far, with room at their end for those of the piece. Of one type of samples.
    template <class To>
    void Take(std::span<const float> piece, std::span<typename To::Stored> results) {
        const std::size_t before = results.size() - piece.size();
        if (allFit_ && !FloatsFit<To>(piece)) {
            allFit_ = false;
            for (std::size_t i = 0; i < before; ++i)
                results[i] = RoundedAndHeld<To>(To::ValueOf(results[i]) + DitherNoise(i));
        }
        for (std::size_t i = 0; i < piece.size(); ++i) {
            const double value = double{FloatSample::Finite(piece[i])} * To::kHalfScale;
            results[before + i] =
                RoundedAndHeld<To>(value + (allFit_ ? 0 : DitherNoise(before + i)));
        }
    }

    bool AllFit() const { return allFit_; }

  private:
    bool allFit_ = true;
};

}  // namespace sonavel
