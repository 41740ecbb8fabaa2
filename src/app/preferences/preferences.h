// What the sheet "Preference Setting" edits, read from Options.ini and Display.ini and written back
// key by key.
#pragma once

#include "document/document_options.h"
#include "platform/program_folder.h"
#include "view/draw/colour_table.h"
#include "view/state/display_settings.h"

namespace sonavel {

inline constexpr int kLeastWaveDevice = -2;
inline constexpr int kLastWaveDevice = 256;
inline constexpr int kLeastBlockFrames = 128;
inline constexpr int kMostBlockFrames = 32767;
inline constexpr int kMostGridMs = 3600000;
inline constexpr int kMostGridPercent = 200;

// Flags are 0 or 1, and numbers that their readers would pass over are those that hold instead.
struct Preferences {
    ColourTable colours;
    DisplaySettings display;
    GridSettings grid;  // of the type 0 or 1, the location 0, 1 or 2
    DocumentOptions options;
    int statusFormat = 1;  // 0 to 2
    int autoPlay = 0;
    int meterScale = 1;  // 0 to 2
    int meterLabels = 0;

    static Preferences Read(const ProgramFolder& folder);
    bool operator==(const Preferences& other) const;
};

// Writes the keys whose values differ, and all colours when one does, each file at once; what else
// the files hold stays. False when a file cannot be written.
bool WriteChanges(const ProgramFolder& folder, const Preferences& before, const Preferences& after);

// All sixteen colours as a section of Display.ini; false for a section that cannot be written.
bool PutColours(ProfileText& display, std::string_view section, const ColourTable& colours);

}  // namespace sonavel
