// What the editor knows of a format of sound files: one row of the table in file_formats.h.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "sound/sound.h"
#include "sound/sound_file_info.h"
#include "sound/transfer_host.h"

namespace sonavel {

// What a sound is to be saved as.
struct SavedForm {
    unsigned channels = 1;
    unsigned bits = 8;
    MarkerSaving markers = MarkerSaving::kOn;
};

// What of a sound a file leaves out, or loses when it is read again.
struct SaveLoss {
    std::string text;        // sentences for the person; empty for nothing
    bool cutsSound = false;  // only the beginning of the sound is written

    void Add(std::string_view sentence) {
        if (!text.empty()) text += ' ';
        text += sentence;
    }
};

// Whether a sound counts as saved once it has been written.
enum class SavedMark { kSaved, kStaysModified };

// Failures leave the sound or the target as it was.
struct FileFormat {
    std::string_view openName;  // "Wave Files", as the dialog "Open" shows it
    std::string_view saveName;  // "Wave File (*.wav)", as "Save As" and the properties do
    std::span<const std::string_view> extensions;  // ".au", in small letters, the usual one first
    SavedMark savedMark = SavedMark::kSaved;

    // Looks at the header alone.
    Result<SoundFileInfo> (*probe)(const std::filesystem::path& path);
    Result<Sound> (*read)(const std::filesystem::path& path, const TransferHost& host);
    // Written beside the target, then renamed over it.
    Outcome (*write)(const Sound& sound, const std::filesystem::path& path, MarkerSaving markers,
                     const TransferHost& host);
    SaveLoss (*lossOf)(const Sound& sound, const SavedForm& form);
};

}  // namespace sonavel
