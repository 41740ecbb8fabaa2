// What ffprobe says of a file, from the lines that it writes: `key="value"` with dots between the
// parts of a key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sound/codec_values.h"

namespace sonavel {

struct ProbeReport {
    std::string coding;        // ffmpeg's short name
    std::string sampleFormat;  // "s16", "fltp"
    std::uint32_t bits = 0;    // of a sample in the file, where it says so
    std::uint32_t rate = 0;
    std::uint32_t channels = 0;
    double seconds = 0;
    std::vector<SoundTag> tags;
    std::vector<SoundChapter> chapters;
};

// Nothing when the lines describe no stream of sound. Lines that make no sense are passed over.
std::optional<ProbeReport> ParseProbeReport(std::string_view lines);

}  // namespace sonavel
