// RIFF WAVE files: reading one, looking at its format, and writing one.
#pragma once

#include <filesystem>

#include "sound/file_format.h"

namespace sonavel {

// The format and the length, of compressed sound as far as its bytes per second tell. A file that
// is no WAV file fails quietly.
Result<SoundFileInfo> ProbeWav(const std::filesystem::path& path);

// Markers that cannot be read cost no sound: a warning, and those read so far stay. What is no WAV
// file or holds no PCM fails quietly.
Result<Sound> ReadWav(const std::filesystem::path& path, const TransferHost& host);

// Writes the sound and, with MarkerSaving::kOn, its markers. With MarkerSaving::kOff the file is
// complete, but that ends as a quiet failure.
Outcome WriteWav(const Sound& sound, const std::filesystem::path& path, MarkerSaving saving,
                 const TransferHost& host);

SaveLoss LossInWav(const Sound& sound, const SavedForm& form);

}  // namespace sonavel
