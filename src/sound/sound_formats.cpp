// The changes of format of Sound: rate, bits and channels.
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

#include "sound/sample_conversion.h"
#include "sound/sample_types.h"
#include "sound/sound.h"

namespace sonavel {
namespace {

PcmFormat WithBits(const PcmFormat& format, unsigned bits) {
    return MakeSoundFormat(format.channels, bits, format.samplesPerSecond);
}

PcmFormat WithChannels(const PcmFormat& format, unsigned channels) {
    return MakeSoundFormat(channels, format.bitsPerSample, format.samplesPerSecond);
}

// Both: false when the format does not allow it or the memory cannot be had.
bool MakeBits(const PcmFormat& format, std::span<const std::uint8_t> from, unsigned bits,
              SoundBuffer& to) {
    if (!IsEditable(format) || !IsSampleWidth(bits)) return false;
    const std::uint64_t bytes = std::uint64_t{from.size()} * bits / format.bitsPerSample;
    if (bytes > MostSoundBytes(WithBits(format, bits)) || !to.AllocBuffer(bytes)) return false;
    VisitSampleType(format.bitsPerSample, [&](auto before) {
        VisitSampleType(bits, [&](auto after) {
            using From = decltype(before);
            using To = decltype(after);
            ConvertSamples<From, To>(SamplesOf<From>(from), SamplesOf<To>(to.Bytes()));
        });
    });
    return true;
}

bool MakeChannels(const PcmFormat& format, std::span<const std::uint8_t> from, unsigned channels,
                  ChannelChoice choice, SoundBuffer& to) {
    if (!IsEditable(format) || (channels != 1 && channels != 2)) return false;
    const std::uint64_t bytes = std::uint64_t{from.size()} * channels / format.channels;
    if (bytes > MostSoundBytes(WithChannels(format, channels)) || !to.AllocBuffer(bytes))
        return false;
    // A last sample that the file cut off has no counterpart in the loops below.
    if (bytes % 4 != 0) std::memset(to.Data() + bytes - bytes % 4, 0, bytes % 4);
    VisitSampleType(format.bitsPerSample, [&](auto type) {
        const auto source = SamplesOf<decltype(type)>(from);
        const auto target = SamplesOf<decltype(type)>(to.Bytes());
        channels == 2 ? SpreadToStereo(source, target, choice) : FoldToMono(source, target, choice);
    });
    return true;
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
    const bool newChannels = channels != sound.GetChannels();
    if (!newChannels && bits == sound.GetBits()) return sound.Copy();
    PcmFormat format = sound.GetFormat();
    SoundBuffer between, converted;
    if (newChannels) {
        if (!MakeChannels(format, sound.Bytes(), channels, choice, between))
            return Failed(failure::kMemory);
        format = WithChannels(format, channels);
    }
    if (bits == format.bitsPerSample) return Sound(format, std::move(between), sound.Markers());
    const auto from = newChannels ? std::as_const(between).Bytes() : sound.Bytes();
    if (!MakeBits(format, from, bits, converted)) return Failed(failure::kMemory);
    return Sound(WithBits(format, bits), std::move(converted), sound.Markers());
}

}  // namespace sonavel
