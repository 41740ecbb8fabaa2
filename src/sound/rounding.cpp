#include "sound/rounding.h"

#include <new>
#include <utility>

#include "sound/sample_rounding.h"
#include "sound/sample_types.h"
#include "sound/watched_conversion.h"

namespace sonavel {
namespace {

// ConvertBits() has a way of its own from one kind of whole numbers to another.
bool IsPlainConversion(const Sound& sound, unsigned bits, Rounding rounding) {
    if (bits >= sound.GetBits()) return true;
    return rounding == Rounding::kPlain && AreWholeNumbers(sound.GetBits());
}

}  // namespace

Result<Sound> Rounded(const Sound& sound, unsigned bits, Rounding rounding,
                      const PieceWatch& watch) try {
    const unsigned before = sound.GetBits();
    if (IsPlainConversion(sound, bits, rounding))
        return Converted(sound, sound.GetChannels(), ChannelChoice::kBothOrMix, bits, watch);
    SoundBuffer rounded;
    if (!IsEditable(sound.GetFormat()) || !IsSampleWidth(bits) ||
        !rounded.AllocBuffer(sound.GetDataSize() * bits / before))
        return Failed(failure::kMemory);
    Outcome made = VisitSampleType(before, [&](auto from) {
        return VisitSampleType(bits, [&](auto to) {
            using From = decltype(from);
            using To = decltype(to);
            if constexpr (kHoldsWholeNumbers<To>)
                return RoundSamples<From, To>(SamplesOf<From>(sound.Bytes()),
                                              SamplesOf<To>(rounded.Bytes()), rounding, watch);
            else
                return Done();
        });
    });
    if (!made) return made;
    return Sound(MakeSoundFormat(sound.GetChannels(), bits, sound.GetSamplesPerSecond()),
                 std::move(rounded), sound.Markers());
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
