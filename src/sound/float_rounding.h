// Samples made whole numbers of fewer bits: exactly where all of a sound's samples fit, else with
// triangular dither, held at full scale.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

#include "sound/dither.h"
#include "sound/nearest.h"
#include "sound/sample_types.h"

namespace sonavel {

// The value of a sample on the scale of another type.
template <class From, class To>
double ScaledTo(typename From::Stored stored) {
    return static_cast<double>(From::ValueOf(stored)) * To::kHalfScale / From::kHalfScale;
}

// Whether samples of the other type hold each of these exactly.
template <class From, class To>
bool SamplesFit(std::span<const typename From::Stored> from) {
    return std::ranges::all_of(from, [](auto stored) {
        const double value = ScaledTo<From, To>(stored);
        return value >= To::kLeast && value <= To::kGreatest && value == Nearest(value);
    });
}

// The nearest whole number that the type holds, as it is stored.
template <class To>
typename To::Stored RoundedAndHeld(double value) {
    const double held = std::clamp<double>(value, To::kLeast, To::kGreatest);
    return To::StoredOf(static_cast<typename To::Value>(Nearest(held)));
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
        if (allFit_ && !SamplesFit<FloatSample, To>(piece)) {
            allFit_ = false;
            for (std::size_t i = 0; i < before; ++i)
                results[i] = RoundedAndHeld<To>(To::ValueOf(results[i]) + DitherNoise(i));
        }
        for (std::size_t i = 0; i < piece.size(); ++i) {
            const double value = ScaledTo<FloatSample, To>(FloatSample::Finite(piece[i]));
            results[before + i] =
                RoundedAndHeld<To>(value + (allFit_ ? 0 : DitherNoise(before + i)));
        }
    }

    bool AllFit() const { return allFit_; }

  private:
    bool allFit_ = true;
};

}  // namespace sonavel
