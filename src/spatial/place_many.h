// A sound at many places, each result a file of its own.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "document/sound_doc.h"
#include "spatial/listener.h"
#include "spatial/placing.h"
#include "spatial/point_list.h"

namespace sonavel {

inline constexpr std::string_view kPlacePattern = "{name}_{azimuth}_{elevation}";

enum class FilesThere { kKeep, kReplace };

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
};

// The places and their files' names, checked: fails for points or a pattern that cannot be read, a
// folder that is not there, and a file to be kept.
Result<ManyPlaces> PreparePlaces(const CSoundDoc& document, const ManyPlacesChoice& choice);

// Writes the WAV files one after the other, with the sound's markers and tags, telling of each by
// its number. What fails or is cancelled leaves the files written before.
Outcome WritePlaces(CSoundDoc& document, const ManyPlaces& places, Listener& listener,
                    const std::function<void(std::size_t)>& tellWritten);

}  // namespace sonavel
