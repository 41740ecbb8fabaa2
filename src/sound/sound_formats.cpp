// The changes of format of Sound: rate, bits and channels.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "sound/sample_conversion.h"
#include "sound/sample_rounding.h"
#include "sound/sample_types.h"
#include "sound/sound.h"
#include "sound/watched_conversion.h"

namespace sonavel {
namespace {

PcmFormat WithBits(const PcmFormat& format, unsigned bits) {
    return MakeSoundFormat(format.channels, bits, format.samplesPerSecond);
}

PcmFormat WithChannels(const PcmFormat& format, unsigned channels) {
    return MakeSoundFormat(channels, format.bitsPerSample, format.samplesPerSecond);
}

template <class From, class To>
Outcome ConvertAll(std::span<const std::uint8_t> from, std::span<std::uint8_t> to,
                   const PieceWatch& watch) {
    const auto source = SamplesOf<From>(from);
    const auto target = SamplesOf<To>(to);
    if constexpr (!kHoldsWholeNumbers<From> && kHoldsWholeNumbers<To>)
        return RoundSamples<From, To>(source, target, Rounding::kDithered, watch);
    else
        return ComputePieces(std::min(source.size(), target.size()), watch,
                             [&](std::size_t first, std::size_t count) {
                                 ConvertSamples<From, To>(source.subspan(first, count),
                                                          target.subspan(first, count));
                             });
}

// Both fail when the format does not allow it or the memory cannot be had.
Outcome MakeBits(const PcmFormat& format, std::span<const std::uint8_t> from, unsigned bits,
                 SoundBuffer& to, const PieceWatch& watch) {
    if (!IsEditable(format) || !IsSampleWidth(bits)) return Failed(failure::kMemory);
    const std::uint64_t bytes = std::uint64_t{from.size()} * bits / format.bitsPerSample;
    if (bytes > MostSoundBytes(WithBits(format, bits)) || !to.AllocBuffer(bytes))
        return Failed(failure::kMemory);
    return VisitSampleType(format.bitsPerSample, [&](auto before) {
        return VisitSampleType(bits, [&](auto after) {
            return ConvertAll<decltype(before), decltype(after)>(from, to.Bytes(), watch);
        });
    });
}

template <class Stored>
Outcome SpreadAll(std::span<const Stored> from, std::span<Stored> to, ChannelChoice choice,
                  const PieceWatch& watch) {
    return ComputePieces(from.size(), watch, [&](std::size_t first, std::size_t count) {
        SpreadToStereo(from.subspan(first, count), to.subspan(2 * first, 2 * count), choice);
    });
}

template <class Stored>
Outcome FoldAll(std::span<const Stored> from, std::span<Stored> to, ChannelChoice choice,
                const PieceWatch& watch) {
    return ComputePieces(to.size(), watch, [&](std::size_t first, std::size_t count) {
        FoldToMono(from.subspan(2 * first, 2 * count), to.subspan(first, count), choice);
    });
}

Outcome MakeChannels(const PcmFormat& format, std::span<const std::uint8_t> from, unsigned channels,
                     ChannelChoice choice, SoundBuffer& to, const PieceWatch& watch) {
    if (!IsEditable(format) || (channels != 1 && channels != 2)) return Failed(failure::kMemory);
    const std::uint64_t bytes = std::uint64_t{from.size()} * channels / format.channels;
    if (bytes > MostSoundBytes(WithChannels(format, channels)) || !to.AllocBuffer(bytes))
        return Failed(failure::kMemory);
    // A last sample that the file cut off has no counterpart in the loops below.
    if (bytes % 4 != 0) std::memset(to.Data() + bytes - bytes % 4, 0, bytes % 4);
    return VisitSampleType(format.bitsPerSample, [&](auto type) {
        const auto source = SamplesOf<decltype(type)>(from);
        const auto target = SamplesOf<decltype(type)>(to.Bytes());
        return channels == 2 ? SpreadAll(source, target, choice, watch)
                             : FoldAll(source, target, choice, watch);
    });
}

Result<Sound> MadeAnew(const Sound& sound, unsigned channels, ChannelChoice choice, unsigned bits,
                       const PieceWatch& watch) {
    const bool newChannels = channels != sound.GetChannels();
    const bool newBits = bits != sound.GetBits();
    if (!newChannels && !newBits) return sound.Copy();
    PcmFormat format = sound.GetFormat();
    SoundBuffer between, converted;
    if (newChannels) {
        Outcome made = MakeChannels(format, sound.Bytes(), channels, choice, between,
                                    PartOf(watch, 0, newBits ? 0.5 : 1));
        if (!made) return made;
        format = WithChannels(format, channels);
    }
    if (!newBits) return Sound(format, std::move(between), sound.Markers());
    const auto from = newChannels ? std::as_const(between).Bytes() : sound.Bytes();
    Outcome made = MakeBits(format, from, bits, converted, PartOf(watch, newChannels ? 0.5 : 0, 1));
    if (!made) return made;
    return Sound(WithBits(format, bits), std::move(converted), sound.Markers());
}

}  // namespace

void Sound::SetRate(std::uint32_t samplesPerSecond) {
    if (samplesPerSecond == format_.samplesPerSecond) return;
    format_.samplesPerSecond = samplesPerSecond;
    format_.averageBytesPerSecond = samplesPerSecond * format_.blockAlign;
}

bool Sound::ConvertBits(unsigned bits) {
    return ConvertFormat(format_.channels, ChannelChoice::kBothOrMix, bits);
}

bool Sound::ConvertChannels(unsigned channels, ChannelChoice choice) {
    return ConvertFormat(channels, choice, format_.bitsPerSample);
}

bool Sound::ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits) {
    if (channels == format_.channels && bits == format_.bitsPerSample) return true;
    Result<Sound> converted = Converted(*this, channels, choice, bits);
    if (!converted) return false;
    format_ = converted->format_;
    samples_ = std::move(converted->samples_);
    return true;
}

Result<Sound> Converted(const Sound& sound, unsigned channels, ChannelChoice choice,
                        unsigned bits) {
    return Converted(sound, channels, choice, bits, Unwatched);
}

Result<Sound> Converted(const Sound& sound, unsigned channels, ChannelChoice choice, unsigned bits,
                        const PieceWatch& watch) try {
    return MadeAnew(sound, channels, choice, bits, watch);
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
