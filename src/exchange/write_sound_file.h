// Writes WAV, RF64, AIFF and AU files whole: samples, markers, tags and chunks.
#pragma once

#include <filesystem>

#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "sound/codec_values.h"
#include "sound/sound_codecs.h"

namespace sonavel {

// Whether this can be written here and needs no encoder.
bool IsWrittenHere(SoundFileKind kind);

// Writes a file beside `path` and renames it over it when it is complete and on the disk; fails
// with a sentence for the person and then leaves `path` as it was. The source is watched once a
// piece. Tags are those of the extras.
Outcome WriteSoundFile(const std::filesystem::path& path, const EncodeRequest& request,
                       const SoundExtras& extras, FrameSource& source);

}  // namespace sonavel
