// RIFF WAVE files: reading one into a sound, looking at its format, and writing one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "sound/wave.h"

namespace sonavel {

struct WavInfo {
    PcmFormat format;  // bits per sample only when the tag is PCM
    std::uint32_t dataBytes = 0;
    std::uint32_t frames = 0;
};

// Failures are reported through the sound, which is otherwise left as it is.
std::optional<WavInfo> ProbeWav(const std::filesystem::path& path, CWave& wave);

// Replaces the sound by the file's. On failure the sound is unchanged and the failure reported
// through it.
bool ReadWav(const std::filesystem::path& path, CWave& wave);

// Writes the sound and, with MarkerSaving::kOn, its markers. On success the sound is no longer
// modified; with MarkerSaving::kOff the file is complete but the result is failure.
bool WriteWav(const std::filesystem::path& path, CWave& wave, MarkerSaving markers);

}  // namespace sonavel
