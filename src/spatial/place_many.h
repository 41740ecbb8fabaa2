// Sounds at many places or along many paths, each result a file of its own.
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "document/sound_doc.h"
#include "spatial/listener.h"
#include "spatial/placing.h"
#include "spatial/point_list.h"

namespace sonavel {

inline constexpr std::string_view kPlacePattern = "{name}_{azimuth}_{elevation}";

enum class FilesThere { kKeep, kReplace };
enum class PlacedSounds { kActive, kAllOpen, kFolder };

struct ManyPlaces {
    std::vector<NamedPoint> points;
    std::vector<std::filesystem::path> paths;  // of each point's file
    Smoothness smoothness = Smoothness::kStepped;
};

struct ManyPlacesChoice {
    std::filesystem::path folder;
    std::string points;  // as ParsePoints() reads them
    std::string pattern{kPlacePattern};
    Smoothness smoothness = Smoothness::kStepped;
    FilesThere filesThere = FilesThere::kKeep;
    PlacedSounds sounds = PlacedSounds::kActive;
    std::filesystem::path soundsFolder{};  // of kFolder
};

// The places of a sound of that name and their files' names, checked: fails for points or a pattern
// that cannot be read, a folder that is not there, a file to be kept, and one that another sound
// has in `taken`, which the files are added to.
Result<ManyPlaces> PreparePlaces(std::string_view soundName, const ManyPlacesChoice& choice,
                                 std::set<std::filesystem::path>& taken);
// Of a document, by its title.
Result<ManyPlaces> PreparePlaces(const CSoundDoc& document, const ManyPlacesChoice& choice);
std::string NameOfPlaced(const CSoundDoc& document);

struct SoundToPlace {
    const Sound& sound;
    const SoundExtras& extras;
    const HostServices& services;
    TransferHost host;
};

// Writes the WAV files one after the other, with the sound's markers and tags, telling of each by
// its number. What fails or is cancelled leaves the files written before.
Outcome WritePlaces(const SoundToPlace& source, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten);
Outcome WritePlaces(CSoundDoc& document, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten);

// The sounds that the choice names, `open` first to last or those of its folder by name, read one
// after the other. All names are checked before the first file is written. Of a folder, what is no
// sound is passed by; fails when it has none, and for the first sound that cannot be read.
Outcome PlaceSounds(const ManyPlacesChoice& choice, const std::vector<CSoundDoc*>& open,
                    const HostServices& services, Listener& listener);

}  // namespace sonavel
