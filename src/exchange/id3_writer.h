// Writes the ID3 tag of an MP3 file: tags, and markers as chapters.
#pragma once

#include <cstdint>
#include <vector>

#include "exchange/sound_extras.h"
#include "platform/outcome.h"

namespace sonavel {

// A tag of version 2.4 in UTF-8, as AddId3Tags reads it. The markers' frames are those of a sound
// of `rate` frames a second; a chapter keeps milliseconds, and that of a point ends where it
// begins. The table of contents names the first 255. Fails beyond 256 MiB.
Result<std::vector<std::uint8_t>> BuildId3Tag(const SoundExtras& extras, std::uint32_t rate);

}  // namespace sonavel
