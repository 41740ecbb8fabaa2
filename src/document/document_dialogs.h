// The dialogs that a document asks for: what a person fills in, as plain values.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
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

class DocumentDialogs {
  public:
    virtual ~DocumentDialogs() = default;

    // Nothing when the dialog was cancelled.
    virtual std::optional<NewSoundChoice> AskNewSound(const NewSoundChoice& initial) = 0;
    virtual std::optional<SaveAsChoice> AskSaveAs(const SaveAsRequest& request) = 0;
};

}  // namespace sonavel
