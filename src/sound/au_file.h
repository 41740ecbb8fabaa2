// Next/Sun audio files (.au, .snd): a big-endian header of magic, data offset, data size, encoding,
// rate and channels, an annotation, and the samples.
#pragma once

#include <filesystem>

#include "sound/file_format.h"

namespace sonavel {

// Looks at the header alone.
Result<SoundFileInfo> ProbeAu(const std::filesystem::path& path);

// 8- and 16-bit linear samples, or mu-law and A-law, which become 16-bit. Shows no progress.
Result<Sound> ReadAu(const std::filesystem::path& path, const TransferHost& host);

// Writes linear samples of the sound's own width, and no markers.
Outcome WriteAu(const Sound& sound, const std::filesystem::path& path, MarkerSaving saving,
                const TransferHost& host);

SaveLoss LossInAu(const Sound& sound, const SavedForm& form);

}  // namespace sonavel
