// Next/Sun audio files (.au, .snd): a big-endian header of magic, data offset, data size, encoding,
// rate and channels, an annotation, and the samples. Failures are shown by the sound's prompts.
#pragma once

#include <filesystem>
#include <optional>

#include "sound/sound_file_info.h"
#include "sound/wave.h"

namespace sonavel {

// Looks at the header alone. Failures are reported through the sound, which is otherwise left
// as it is.
std::optional<SoundFileInfo> ProbeAu(const std::filesystem::path& path, CWave& wave);

// Replaces the sound by the file's: 8- and 16-bit linear samples, or mu-law and A-law, which become
// 16-bit. On failure the sound is unchanged.
bool ReadAu(const std::filesystem::path& path, CWave& wave);

// Writes linear samples of the sound's own width. On success the sound is no longer modified.
bool WriteAu(const std::filesystem::path& path, CWave& wave);

}  // namespace sonavel
