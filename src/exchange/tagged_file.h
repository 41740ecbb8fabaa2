// Puts tags and chapters into FLAC, Ogg Vorbis, Opus and MP3 files that an encoder wrote, beside
// sound that stays byte for byte the same.
#pragma once

#include <cstdint>

#include "exchange/random_bytes.h"
#include "exchange/sound_extras.h"
#include "platform/outcome.h"
#include "platform/replacing_file.h"

namespace sonavel {

// Whether files of that kind get their tags and chapters here.
bool IsTaggedHere(SoundFileKind kind);

// Copies the encoded file with the tags and markers of the extras in place of its own tags. The
// markers' frames are those of a sound of `rate` frames a second. Commits nothing. Fails with a
// sentence for the person.
Outcome WriteTagged(RandomBytes& encoded, SoundFileKind kind, const SoundExtras& extras,
                    std::uint32_t rate, ReplacingFile& to);

}  // namespace sonavel
