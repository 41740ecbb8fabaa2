// Formats that only ffmpeg decodes, known by their first bytes or, where these say nothing, by the
// extension of the name.
#pragma once

#include <filesystem>
#include <string_view>

namespace sonavel {

// "M4A", "WavPack"; empty where the file looks like none of them.
std::string_view ForeignFormatName(const std::filesystem::path& path);

// What ffmpeg's short name of a coding stands for: "AAC" for "aac"; the name itself where it has no
// better one.
std::string_view CodingName(std::string_view ffmpegName);
// Whether the coding keeps every sample as it was.
bool IsLossless(std::string_view ffmpegName);

// The demuxers that ffmpeg may use: those of single files, none that follows references to others.
extern const std::string_view kAllowedDemuxers;

}  // namespace sonavel
