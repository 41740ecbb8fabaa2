// Numbers of the header of Next/Sun audio files.
#pragma once

#include <cstdint>

namespace sonavel {

inline constexpr std::uint32_t kAuMagic = 0x2E736E64;  // ".snd"
inline constexpr std::uint32_t kAuHeaderBytes = 24;
inline constexpr std::uint32_t kAuUnknownSize =
    0xFFFFFFFF;  // the data go up to the end of the file

enum class AuEncoding : std::uint32_t {
    kMuLaw = 1,
    kLinear8 = 2,
    kLinear16 = 3,
    kALaw = 27,
};

}  // namespace sonavel
