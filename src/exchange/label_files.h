// Markers and regions as texts that other programs read: label tracks, tables, captions and cue
// sheets.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"
#include "sound/codec_values.h"

namespace sonavel {

enum class LabelFormat : std::uint8_t {
    kLabelTrack,  // .txt: "START<tab>END<tab>NAME", seconds
    kTable,       // .csv: "name,start,end", seconds (RFC 4180)
    kCaptions,    // .vtt: WebVTT, milliseconds
    kCueSheet,    // .cue: 75 frames a second; regions lose their ends
};

// By the extension, in letters of either case.
std::optional<LabelFormat> LabelFormatOf(const std::filesystem::path& path);

// What a list of labels says of the sound that it belongs to.
struct LabelledSound {
    std::uint32_t samplesPerSecond = 0;  // above 0
    std::string title;                   // a cue sheet's file
};

// Labels in the order of their frames; line breaks and tabs in names become blanks. Chapters of no
// length are points.
std::string WriteLabels(LabelFormat format, const std::vector<SoundChapter>& labels,
                        const LabelledSound& sound);

// Fails with a sentence that names the first line that is none of the format's. Names are UTF-8.
// At most kMostMarkers labels. Throws std::bad_alloc.
Result<std::vector<SoundChapter>> ReadLabels(LabelFormat format, std::string_view text,
                                             std::uint32_t samplesPerSecond);

// The same of a file, at most kMostLabelBytes long; and into a file, which is replaced whole.
inline constexpr std::size_t kMostLabelBytes = std::size_t{16} << 20;
Result<std::vector<SoundChapter>> ReadLabelFile(const std::filesystem::path& path,
                                                std::uint32_t samplesPerSecond);
Outcome WriteLabelFile(const std::filesystem::path& path, const std::vector<SoundChapter>& labels,
                       const LabelledSound& sound);

}  // namespace sonavel
