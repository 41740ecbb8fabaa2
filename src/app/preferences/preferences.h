// What the sheet "Preference Setting" edits, read from Options.ini and Display.ini and written back
// key by key; the responses of 3D sound and the keys are among the person's own settings.
#pragma once

#include <string>

#include "app/key_sets.h"
#include "platform/program_folder.h"
#include "platform/settings.h"
#include "view/draw/colour_table.h"

namespace sonavel {

struct Preferences {
    ColourTable colours;
    SettingValues settings;  // the numbers in force, flags 0 or 1
    std::string ears;        // the SOFA file of smooth 3D sound; empty for the table
    ChangedKeys keys;        // of commands

    static Preferences Read(const ProgramFolder& folder);
    bool operator==(const Preferences&) const = default;
};

// Writes the keys whose values differ, and all colours when one does, each file at once; what else
// the files hold stays. False when a file cannot be written.
bool WriteChanges(const ProgramFolder& folder, const Preferences& before, const Preferences& after);

// All sixteen colours as a section of Display.ini; false for a section that cannot be written.
bool PutColours(ProfileText& display, std::string_view section, const ColourTable& colours);

}  // namespace sonavel
