// What a document asks before it is made or saved under another name, and the answers that it
// takes, as plain values.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace sonavel {

// The dialog "New".
struct NewSoundChoice {
    std::uint32_t samplesPerSecond = 44100;
    unsigned channels = 1;
    unsigned bits = 8;
};

// What the extended Save As dialog is opened with.
struct SaveAsRequest {
    std::string proposedName;
    std::string filter;
    std::uint32_t samplesPerSecond = 0;
    unsigned channels = 1;
    unsigned bits = 8;
    bool saveMarkers = true;
    double durationSeconds = 0;
};

struct SaveAsChoice {
    std::filesystem::path path;  // without an extension when none was chosen
    unsigned channels = 1;
    unsigned bits = 8;
    bool saveMarkers = true;
};

}  // namespace sonavel
