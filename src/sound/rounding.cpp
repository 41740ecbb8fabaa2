#include "sound/rounding.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include "sound/dither.h"
#include "sound/float_rounding.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

template <class Type>
typename Type::Stored Finite(typename Type::Stored stored) {
    if constexpr (kHoldsWholeNumbers<Type>)
        return stored;
    else
        return Type::Finite(stored);
}

template <class From, class To, class Noise>
void Round(std::span<const typename From::Stored> from, std::span<typename To::Stored> to,
           const Noise& noise) {
    for (std::size_t i = 0; i < from.size(); ++i)
        to[i] = RoundedAndHeld<To>(ScaledTo<From, To>(Finite<From>(from[i])) + noise(i));
}

template <class From, class To>
void RoundAll(std::span<const typename From::Stored> from, std::span<typename To::Stored> to,
              Rounding rounding) {
    if (rounding == Rounding::kDithered && !SamplesFit<From, To>(from))
        Round<From, To>(from, to, [](std::size_t i) { return DitherNoise(i); });
    else
        Round<From, To>(from, to, [](std::size_t) { return 0.0; });
}

// ConvertBits() has a way of its own from one kind of whole numbers to another.
bool IsPlainConversion(const Sound& sound, unsigned bits, Rounding rounding) {
    if (bits >= sound.GetBits()) return true;
    return rounding == Rounding::kPlain && AreWholeNumbers(sound.GetBits());
}

}  // namespace

Result<Sound> Rounded(const Sound& sound, unsigned bits, Rounding rounding) {
    const unsigned before = sound.GetBits();
    if (IsPlainConversion(sound, bits, rounding))
        return Converted(sound, sound.GetChannels(), ChannelChoice::kBothOrMix, bits);
    SoundBuffer rounded;
    if (!IsEditable(sound.GetFormat()) || !IsSampleWidth(bits) ||
        !rounded.AllocBuffer(sound.GetDataSize() * bits / before))
        return Failed(failure::kMemory);
    VisitSampleType(before, [&](auto from) {
        VisitSampleType(bits, [&](auto to) {
            using From = decltype(from);
            using To = decltype(to);
            const auto source = SamplesOf<From>(sound.Bytes());
            const auto target = SamplesOf<To>(rounded.Bytes());
            if constexpr (kHoldsWholeNumbers<To>)
                RoundAll<From, To>(source.first(std::min(source.size(), target.size())), target,
                                   rounding);
        });
    });
    return Sound(MakeSoundFormat(sound.GetChannels(), bits, sound.GetSamplesPerSecond()),
                 std::move(rounded), sound.Markers());
}

}  // namespace sonavel
