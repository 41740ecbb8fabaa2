// AIFF files: reading one into a sound and writing one. Warnings and failures are shown by the
// sound's prompts.
#pragma once

#include <filesystem>
#include <optional>

#include "sound/sound_file_info.h"
#include "sound/wave.h"

namespace sonavel {

// Looks at the header alone. Its format need not be editable. Failures are reported through the
// sound, which is otherwise left as it is.
std::optional<SoundFileInfo> ProbeAiff(const std::filesystem::path& path, CWave& wave);

// Replaces the sound by the file's. Sound that the file announces and lacks becomes silence, after
// a warning. On failure, and when the person cancels, the sound is unchanged.
bool ReadAiff(const std::filesystem::path& path, CWave& wave);

// Of a 16-bit sound exactly one second is written, cut or filled up with zeros, while the header
// announces all frames. So the sound stays modified.
bool WriteAiff(const std::filesystem::path& path, CWave& wave);

}  // namespace sonavel
