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

}  // namespace

void CWave::SetRate(std::uint32_t samplesPerSecond) {
    if (samplesPerSecond == format_.samplesPerSecond) return;
    format_.samplesPerSecond = samplesPerSecond;
    format_.averageBytesPerSecond = samplesPerSecond * format_.blockAlign;
    modified_ = true;
}

bool CWave::ConvertBits(unsigned bits) {
    if (bits == format_.bitsPerSample) return true;
    if (!IsEditable(format_) || (bits != 8 && bits != 16)) return false;
    const std::uint64_t bytes = std::uint64_t{buffer_.Size()} * bits / format_.bitsPerSample;
    SoundBuffer converted;
    if (bytes > kMaxSoundBytes || !converted.AllocBuffer(bytes)) return false;
    Convert(buffer_, converted, bits);
    buffer_ = std::move(converted);
    format_ = MakePcmFormat(format_.channels, bits, format_.samplesPerSecond);
    modified_ = true;
    return true;
}

bool CWave::ConvertChannels(unsigned channels, ChannelChoice choice) {
    if (channels == format_.channels) return true;
    if (!IsEditable(format_) || (channels != 1 && channels != 2)) return false;
    const std::uint64_t bytes = std::uint64_t{buffer_.Size()} * channels / format_.channels;
    SoundBuffer converted;
    if (bytes > kMaxSoundBytes || !converted.AllocBuffer(bytes)) return false;
    // A last sample that the file cut off has no counterpart in the loops below.
    if (bytes % 4 != 0) std::memset(converted.Data() + bytes - bytes % 4, 0, bytes % 4);
    const SoundBuffer& old = buffer_;
    if (format_.bitsPerSample == 16)
        ConvertChannelCount<std::int16_t>(Words(old.Bytes()), Words(converted.Bytes()), channels,
                                          choice);
    else
        ConvertChannelCount<std::uint8_t>(old.Bytes(), converted.Bytes(), channels, choice);
    buffer_ = std::move(converted);
    format_ = MakePcmFormat(channels, format_.bitsPerSample, format_.samplesPerSecond);
    modified_ = true;
    return true;
}

}  // namespace sonavel
