// The "fmt " chunk of WAV files, in the forms that different writers give it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sound/pcm_format.h"

namespace sonavel {

inline constexpr std::size_t kLeastWavFormatBytes = 14;       // without the bits per sample
inline constexpr std::size_t kWavPcmFormatBytes = 16;         // with them
inline constexpr std::size_t kWavExtensibleFormatBytes = 40;  // with a format behind the format

// The format in the first bytes of the chunk, at least kLeastWavFormatBytes of them; bits per
// sample only of PCM, and only where they are there. Plain PCM that is wrapped in an extensible
// header comes out as plain PCM where the editor can hold it. A block align or a number of bytes
// per second of 0 is computed from the other fields.
PcmFormat ParseWavFormat(std::span<const std::uint8_t> chunk);

// What stands before the samples of a PCM file.
inline constexpr std::uint32_t kWavHeaderBytes = 44;

// Those bytes; `bytesBehindData` are counted by the RIFF size as the data are.
std::vector<std::uint8_t> BuildWavHeader(const PcmFormat& format, std::uint32_t dataBytes,
                                         std::uint32_t bytesBehindData);

}  // namespace sonavel
