// What a kind of file has no place for.
#pragma once

#include <string>
#include <vector>

#include "exchange/sound_extras.h"
#include "sound/codec_values.h"

namespace sonavel {

// What of a sound of `rate` frames a second with these extras is lost in a file of that kind, each
// a clause for the person without a full stop: "Markers cannot be written to an AU file". Empty
// when all of it is kept.
std::vector<std::string> LossesOf(SoundFileKind kind, std::uint32_t rate,
                                  const SoundExtras& extras);

}  // namespace sonavel
