// The changes of format of CWave: rate, bits and channels.
#include <cstring>
#include <utility>

#include "sound/sample_conversion.h"
#include "sound/typed_samples.h"
#include "sound/wave.h"

namespace sonavel {
namespace {

void Convert(const SoundBuffer& from, SoundBuffer& to, unsigned newBits) {
    if (newBits == 16)
        WidenSamples(from.Bytes(), Words(to.Bytes()));
    else
        NarrowSamples(Words(from.Bytes()), to.Bytes());
}

template <class Sample>
void ConvertChannelCount(std::span<const Sample> from, std::span<Sample> to, unsigned newChannels,
                         ChannelChoice choice) {
    if (newChannels == 2)
        SpreadToStereo(from, to, choice);
    else
        FoldToMono(from, to, choice);
}

PcmFormat WithBits(const PcmFormat& format, unsigned bits) {
    return MakePcmFormat(format.channels, bits, format.samplesPerSecond);
}

PcmFormat WithChannels(const PcmFormat& format, unsigned channels) {
    return MakePcmFormat(channels, format.bitsPerSample, format.samplesPerSecond);
}

// Both: false when the format does not allow it or the memory cannot be had.
bool MakeBits(const PcmFormat& format, const SoundBuffer& from, unsigned bits, SoundBuffer& to) {
    if (!IsEditable(format) || (bits != 8 && bits != 16)) return false;
    const std::uint64_t bytes = std::uint64_t{from.Size()} * bits / format.bitsPerSample;
    if (bytes > kMaxSoundBytes || !to.AllocBuffer(bytes)) return false;
    Convert(from, to, bits);
    return true;
}

bool MakeChannels(const PcmFormat& format, const SoundBuffer& from, unsigned channels,
                  ChannelChoice choice, SoundBuffer& to) {
    if (!IsEditable(format) || (channels != 1 && channels != 2)) return false;
    const std::uint64_t bytes = std::uint64_t{from.Size()} * channels / format.channels;
    if (bytes > kMaxSoundBytes || !to.AllocBuffer(bytes)) return false;
    // A last sample that the file cut off has no counterpart in the loops below.
    if (bytes % 4 != 0) std::memset(to.Data() + bytes - bytes % 4, 0, bytes % 4);
    if (format.bitsPerSample == 16)
        ConvertChannelCount<std::int16_t>(Words(from.Bytes()), Words(to.Bytes()), channels, choice);
    else
        ConvertChannelCount<std::uint8_t>(from.Bytes(), to.Bytes(), channels, choice);
    return true;
}

}  // namespace

void CWave::SetRate(std::uint32_t samplesPerSecond) {
    if (samplesPerSecond == format_.samplesPerSecond) return;
    format_.samplesPerSecond = samplesPerSecond;
    format_.averageBytesPerSecond = samplesPerSecond * format_.blockAlign;
    modified_ = true;
}

void CWave::TakeConverted(const PcmFormat& format, SoundBuffer&& buffer) {
    buffer_ = std::move(buffer);
    format_ = format;
    modified_ = true;
}

bool CWave::ConvertBits(unsigned bits) {
    if (bits == format_.bitsPerSample) return true;
    SoundBuffer converted;
    if (!MakeBits(format_, buffer_, bits, converted)) return false;
    TakeConverted(WithBits(format_, bits), std::move(converted));
    return true;
}

bool CWave::ConvertChannels(unsigned channels, ChannelChoice choice) {
    if (channels == format_.channels) return true;
    SoundBuffer converted;
    if (!MakeChannels(format_, buffer_, channels, choice, converted)) return false;
    TakeConverted(WithChannels(format_, channels), std::move(converted));
    return true;
}

bool CWave::ConvertFormat(unsigned channels, ChannelChoice choice, unsigned bits) {
    if (channels == format_.channels) return ConvertBits(bits);
    if (bits == format_.bitsPerSample) return ConvertChannels(channels, choice);
    const PcmFormat between = WithChannels(format_, channels);
    SoundBuffer betweenBuffer, converted;
    if (!MakeChannels(format_, buffer_, channels, choice, betweenBuffer) ||
        !MakeBits(between, betweenBuffer, bits, converted))
        return false;
    TakeConverted(WithBits(between, bits), std::move(converted));
    return true;
}

}  // namespace sonavel
