// Whole blocks of samples made whole numbers of another type, each rounded to the nearest and held
// at full scale.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <span>

#include "sound/float_rounding.h"
#include "sound/rounding.h"
#include "sound/sample_pieces.h"
#include "sound/sample_types.h"

namespace sonavel {

template <class From>
using SourceSamples = std::span<const typename From::Stored>;
template <class To>
using TargetSamples = std::span<typename To::Stored>;

// True when a sample does not fit and all of them therefore get noise.
template <class From, class To>
Result<bool> NeedsDither(SourceSamples<From> from, const PieceWatch& watch) {
    std::atomic<bool> fits = true;
    Outcome looked = ComputePieces(from.size(), watch, [&](std::size_t first, std::size_t count) {
        if (fits && !SamplesFit<From, To>(from.subspan(first, count))) fits = false;
    });
    if (!looked) return looked;
    return !fits;
}

template <class Type>
typename Type::Stored FiniteSample(typename Type::Stored stored) {
    if constexpr (kHoldsWholeNumbers<Type>)
        return stored;
    else
        return Type::Finite(stored);
}

// Both of one size.
template <class From, class To, class Noise>
Outcome RoundWith(SourceSamples<From> from, TargetSamples<To> to, const Noise& noise,
                  const PieceWatch& watch) {
    return ComputePieces(from.size(), watch, [&](std::size_t first, std::size_t count) {
        for (std::size_t i = first; i < first + count; ++i)
            to[i] = RoundedAndHeld<To>(ScaledTo<From, To>(FiniteSample<From>(from[i])) + noise(i));
    });
}

// As many as both hold.
template <class From, class To>
Outcome RoundSamples(SourceSamples<From> from, TargetSamples<To> to, Rounding rounding,
                     const PieceWatch& watch) {
    const double shareOfLooking = rounding == Rounding::kDithered ? 0.25 : 0;
    const std::size_t count = std::min(from.size(), to.size());
    Result<bool> dithered = false;
    if (rounding == Rounding::kDithered)
        dithered = NeedsDither<From, To>(from.first(count), PartOf(watch, 0, shareOfLooking));
    if (!dithered) return dithered.Ended();
    const PieceWatch rest = PartOf(watch, shareOfLooking, 1);
    if (*dithered)
        return RoundWith<From, To>(
            from.first(count), to.first(count), [](std::size_t i) { return DitherNoise(i); }, rest);
    return RoundWith<From, To>(
        from.first(count), to.first(count), [](std::size_t) { return 0.0; }, rest);
}

}  // namespace sonavel
