// AIFF files: reading one and writing one.
#pragma once

#include <filesystem>

#include "sound/file_format.h"

namespace sonavel {

// Looks at the header alone.
Result<SoundFileInfo> ProbeAiff(const std::filesystem::path& path);

// Sound that the file announces and lacks becomes silence, after a warning.
Result<Sound> ReadAiff(const std::filesystem::path& path, const TransferHost& host);

// Of a 16-bit sound exactly one second is written, cut or filled up with zeros, while the header
// announces all frames. So a modified sound stays modified. No markers are written.
Outcome WriteAiff(const Sound& sound, const std::filesystem::path& path, MarkerSaving saving,
                  const TransferHost& host);

SaveLoss LossInAiff(const Sound& sound, const SavedForm& form);

}  // namespace sonavel
