// The record of a format of samples, as the "fmt " chunk of a RIFF WAVE file holds it.
#pragma once

#include <cstdint>

namespace sonavel {

inline constexpr std::uint16_t kPcmFormatTag = 1;
inline constexpr std::uint16_t kFloatFormatTag = 3;

struct PcmFormat {
    std::uint16_t formatTag = kPcmFormatTag;
    std::uint16_t channels = 0;
    std::uint32_t samplesPerSecond = 0;
    std::uint32_t averageBytesPerSecond = 0;
    std::uint16_t blockAlign = 0;  // bytes per frame
    std::uint16_t bitsPerSample = 0;

    bool operator==(const PcmFormat&) const = default;
};

// The consistent record for 8 or 16 bits and 1 or 2 channels.
PcmFormat MakePcmFormat(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond);
// That of a sound of the editor: 8 and 16 bits are PCM, 32 are float.
PcmFormat MakeSoundFormat(unsigned channels, unsigned bits, std::uint32_t samplesPerSecond);

// True for what the editor can hold: PCM of 8 or 16 bits or float of 32, 1 or 2 channels, a rate
// above 0, and a block align that fits them.
bool IsEditable(const PcmFormat& format);

// Whether frames of one may lie among those of the other, at whatever rate.
bool HasSameFrames(const PcmFormat& a, const PcmFormat& b);

}  // namespace sonavel
