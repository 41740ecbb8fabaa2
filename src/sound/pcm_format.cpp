#include "sound/pcm_format.h"

#include "sound/sample_types.h"

namespace sonavel {

PcmFormat MakePcmFormat(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond) {
    PcmFormat format;
    format.channels = static_cast<std::uint16_t>(channels);
    format.bitsPerSample = static_cast<std::uint16_t>(bits);
    format.blockAlign = static_cast<std::uint16_t>(bits / 8 * channels);
    format.samplesPerSecond = samplesPerSecond;
    format.averageBytesPerSecond = samplesPerSecond * format.blockAlign;
    return format;
}

PcmFormat MakeSoundFormat(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond) {
    PcmFormat format = MakePcmFormat(channels, bits, samplesPerSecond);
    if (!AreWholeNumbers(bits)) format.formatTag = kFloatFormatTag;
    return format;
}

bool IsEditable(const PcmFormat& format) {
    const bool channelsFit = format.channels == 1 || format.channels == 2;
    const unsigned bits = format.bitsPerSample;
    const auto tag = AreWholeNumbers(bits) ? kPcmFormatTag : kFloatFormatTag;
    return format.formatTag == tag && channelsFit && IsSampleWidth(bits) &&
           format.samplesPerSecond > 0 &&
           format.blockAlign == format.bitsPerSample / 8 * format.channels;
}

bool HasSameFrames(const PcmFormat& a, const PcmFormat& b) {
    return a.formatTag == b.formatTag && a.channels == b.channels &&
           a.bitsPerSample == b.bitsPerSample && a.blockAlign == b.blockAlign;
}

}  // namespace sonavel
