// Sound files as they come into a catalogue, are looked at again, and are found where they moved.
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "catalogue/catalogue.h"
#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "sound/sound_codecs.h"

namespace sonavel {

struct AddedSamples {
    std::size_t added = 0;
    std::size_t known = 0;       // in the catalogue before
    std::size_t unreadable = 0;  // left out
    std::string firstFailure{};  // of those: the name and the reason
    bool cancelled = false;      // what had been added by then stays
};

// Adds files, and of folders all sound files in and below them. Links to folders are not followed.
// Here and below, foreign formats are known with `codecs` alone, which may be null.
AddedSamples AddSamples(Catalogue& catalogue, std::span<const std::filesystem::path> paths,
                        const SoundCodecs* codecs, ProgressFactory& progress);

enum class Probing { kWhenSizeChanged, kAlways };
enum class CheckResult {
    kSame,
    kPresenceChanged,  // which is not stored
    kFactsChanged,
};

// Looks whether the file is there, and reads its header again when it seems to have changed or
// its format is not known yet. A decoder that takes more than a second over it is given up.
CheckResult CheckSample(Catalogue& catalogue, std::size_t entry, Probing probing,
                        const SoundCodecs* codecs);

// Takes `found` for the file of a missing entry, and looks for the files of the other missing
// entries below the folder that has moved with it. Returns how many entries were found again; fails
// when `found` is no sound file or stands for another entry.
Result<std::size_t> LocateSample(Catalogue& catalogue, std::size_t entry,
                                 const std::filesystem::path& found, const SoundCodecs* codecs);

}  // namespace sonavel
