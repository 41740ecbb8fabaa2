// What a document keeps of the foreign file that it came from.
#pragma once

#include <string>
#include <vector>

#include "exchange/sound_extras.h"
#include "exchange/sound_import.h"
#include "sound/codec_values.h"

namespace sonavel {

struct ImportOrigin {
    SoundFileDescription description;
    std::string line;                // what happened, for the line above the waveform
    std::vector<std::string> taken;  // what import took away, as ImportedSound says it
    enum class Losses : std::uint8_t { kNotAsked, kAccepted } losses = Losses::kNotAsked;
};

// What a save into a file of the origin's kind writes.
EncodeRequest RequestLike(const SoundFileDescription& description);

// What a save over the origin's file loses, each a clause for the person without a full stop. Of
// the extras the markers count, too.
std::vector<std::string> LossesOfSaving(const ImportOrigin& origin, const Sound& sound,
                                        const SoundExtras& extras);

}  // namespace sonavel
