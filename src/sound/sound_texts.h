// The texts in which formats, sizes and times are shown.
#pragma once

#include <cstdint>
#include <string>

namespace sonavel {

// "00:01:05.500". The leading zero of the seconds is chosen before the rounding to three decimals,
// so 9.9996 gives "00:00:010.000".
std::string TimeText(double seconds);
std::string RateText(std::uint32_t samplesPerSecond);  // "44,100 Hz"
std::string BitsText(unsigned bits);                   // "16-bit"
std::string ChannelsText(unsigned channels);           // "Mono", "Stereo"
std::string ByteCountText(std::uint64_t bytes);        // "%d Bytes"
std::string FrameCountText(std::uint32_t frames);      // "%d Counts"
// The registered name of a wave format tag, or "[%u] (unknown)".
std::string FormatTagName(std::uint16_t tag);

}  // namespace sonavel
