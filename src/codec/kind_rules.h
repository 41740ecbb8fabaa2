// What each kind of file can hold, so that a request is refused before an encoder is started.
#pragma once

#include <string_view>

#include "platform/outcome.h"
#include "sound/codec_values.h"

namespace sonavel {

// "FLAC", "Ogg Vorbis"; empty for kOther.
std::string_view KindName(SoundFileKind kind);

// Lossy kinds take a quality and have no depth.
bool IsLossy(SoundFileKind kind);

// Fails with a sentence for the person where the kind of file cannot hold the sound.
Outcome CheckEncodable(const EncodeRequest& request);

}  // namespace sonavel
