#include "app/preferences/preferences.h"

#include <algorithm>

#include "app/own_ears.h"

namespace sonavel {
namespace {

constexpr const char* kColourKeys[ColourTable::kSlots] = {
    "WAVEFORM",     "BACKGROUND",       "GRID",        "SELECTED WAVEFORM",
    "SELECTION",    "CENTER LINE",      "RESERVED 6",  "CURSOR",
    "END OF SOUND", "MARKER LABEL",     "RULER TEXT",  "MARKER STRIP",
    "RESERVED 12",  "RULER BACKGROUND", "RESERVED 14", "LANE SEPARATOR",
};

std::string ColourText(Rgb colour) {
    std::string text;
    for (const int part : {colour.red, colour.green, colour.blue})
        text += std::to_string(part) + ",";
    return text;
}

bool PutNumbers(ProfileText& text, SettingsFile file, const SettingValues& before,
                const SettingValues& after) {
    return std::ranges::all_of(AllSettings(), [&](const Setting& row) {
        return row.file != file || after[row.id] == before[row.id] ||
               text.SetInteger(row.section, row.key, after[row.id]);
    });
}

}  // namespace

Preferences Preferences::Read(const ProgramFolder& folder) {
    const ProfileText display = folder.Display().Read();
    const SettingValues inOptions = folder.Options().Read();
    const SettingValues inDisplay = display;
    Preferences preferences;
    preferences.colours.Load(display);
    for (const Setting& row : AllSettings()) {
        const SettingValues& stored = row.file == SettingsFile::kOptions ? inOptions : inDisplay;
        preferences.settings[row.id] = row.Effective(stored[row.id]);
    }
    preferences.ears = ChosenEars();
    preferences.keys = StoredKeys();
    return preferences;
}

bool WriteChanges(const ProgramFolder& folder, const Preferences& before,
                  const Preferences& after) {
    const bool options = folder.Options().Change([&](ProfileText& text) {
        return PutNumbers(text, SettingsFile::kOptions, before.settings, after.settings);
    });
    const bool display = folder.Display().Change([&](ProfileText& text) {
        return PutNumbers(text, SettingsFile::kDisplay, before.settings, after.settings) &&
               (after.colours == before.colours || PutColours(text, kColourSection, after.colours));
    });
    if (after.ears != before.ears) ChooseEars(after.ears);
    if (after.keys != before.keys) StoreKeys(after.keys);
    return options && display;
}

bool PutColours(ProfileText& display, std::string_view section, const ColourTable& colours) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (std::size_t slot = 0; slot < ColourTable::kSlots; ++slot)
        entries.emplace_back(kColourKeys[slot], ColourText(colours.At(slot)));
    return display.SetEntries(section, entries);
}

}  // namespace sonavel
