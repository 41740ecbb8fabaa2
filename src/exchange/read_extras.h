// Takes markers, tags and foreign chunks out of a sound file, by its content.
#pragma once

#include <cstdint>

#include "exchange/random_bytes.h"
#include "exchange/sound_extras.h"
#include "platform/outcome.h"

namespace sonavel {

// Of WAV, RF64, W64, AIFF, FLAC, Ogg and MP3 files; others have none that are known here. `rate` is
// that of the decoded sound in frames a second. Damaged files give what is there, with remarks.
// Fails only for lack of memory.
Result<SoundExtras> ReadExtras(RandomBytes& bytes, std::uint32_t rate);

}  // namespace sonavel
