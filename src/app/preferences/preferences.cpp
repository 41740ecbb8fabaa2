#include "app/preferences/preferences.h"

#include <algorithm>
#include <utility>

#include "audio/wave_player.h"
#include "meter/meter_scale.h"

namespace sonavel {
namespace {

enum class IniFile { kOptions, kDisplay };

struct IntegerKey {
    IniFile file;
    const char* section;
    const char* key;
    int& (*value)(Preferences&);
};

constexpr const char* kWave = "__SOUND_WAVE_OPTIONS";
constexpr const char* kGeneral = "__SOUND_GENERAL_OPTIONS";
constexpr const char* kOptions = "__SOUND_OPTIONS";
constexpr const char* kGridItems = "__SOUND_GRID_DISPLAY_ITEMS";
constexpr const char* kGridOptions = "__SOUND_GRID_OPTIONS";
constexpr const char* kMeter = "__SOUND_PLAY_METER";
constexpr const char* kDisplayItems = "__SOUND_DISPLAY_ITEMS";

using P = Preferences;

constexpr IntegerKey kKeys[] = {
    {IniFile::kOptions, kWave, "PLAYBACK DEVICE ID",
     [](P& p) -> int& { return p.options.playbackDeviceId; }},
    {IniFile::kOptions, kWave, "PLAYBACK BUFFER SIZE",
     [](P& p) -> int& { return p.options.playbackBlockFrames; }},
    {IniFile::kOptions, kWave, "RECORD DEVICE ID",
     [](P& p) -> int& { return p.options.recordDeviceId; }},
    {IniFile::kOptions, kWave, "RECORD BUFFER SIZE",
     [](P& p) -> int& { return p.options.recordBlockFrames; }},
    {IniFile::kOptions, kGeneral, "DISPLAY SAMPLE DATA",
     [](P& p) -> int& { return p.options.displaySampleData; }},
    {IniFile::kOptions, kGeneral, "DISPLAY SEEKER",
     [](P& p) -> int& { return p.options.displaySeeker; }},
    {IniFile::kOptions, kGeneral, "OPEN AND PLAY",
     [](P& p) -> int& { return p.options.openAndPlay; }},
    {IniFile::kOptions, kGeneral, "OPEN AND MAXIMIZE",
     [](P& p) -> int& { return p.options.openAndMaximize; }},
    {IniFile::kOptions, kGeneral, "OPEN AND FULL TIME ZOOM",
     [](P& p) -> int& { return p.options.openAndFullTimeZoom; }},
    {IniFile::kOptions, kGeneral, "APPLY AUTO SKIP MODE",
     [](P& p) -> int& { return p.options.applyAutoSkipMode; }},
    // Spelled so in every Options.ini that exists.
    {IniFile::kOptions, kGeneral, "SAVE UNDO REDO INFOMATION",
     [](P& p) -> int& { return p.options.saveUndo; }},
    {IniFile::kOptions, kGeneral, "PLAY SCROLLING",
     [](P& p) -> int& { return p.options.playScrolling; }},
    {IniFile::kOptions, kGeneral, "마커 저장", [](P& p) -> int& { return p.options.saveMarkers; }},
    {IniFile::kOptions, kOptions, "Status Format", [](P& p) -> int& { return p.statusFormat; }},
    {IniFile::kOptions, kOptions, "Auto Play", [](P& p) -> int& { return p.autoPlay; }},
    {IniFile::kOptions, kGridItems, "WIDTH GRID", [](P& p) -> int& { return p.grid.timeGrid; }},
    {IniFile::kOptions, kGridItems, "HEIGHT GRID", [](P& p) -> int& { return p.grid.levelGrid; }},
    {IniFile::kOptions, kGridItems, "PRESENT LOCATION",
     [](P& p) -> int& { return p.grid.timeLabels; }},
    {IniFile::kOptions, kGridOptions, "GRID TYPE", [](P& p) -> int& { return p.grid.type; }},
    {IniFile::kOptions, kGridOptions, "GRID LOCATION",
     [](P& p) -> int& { return p.grid.location; }},
    {IniFile::kOptions, kGridOptions, "GRID WIDTH SPACING",
     [](P& p) -> int& { return p.grid.widthSpacingMs; }},
    {IniFile::kOptions, kGridOptions, "GRID HEIGHT SPACING",
     [](P& p) -> int& { return p.grid.heightSpacingPercent; }},
    {IniFile::kOptions, kMeter, "PLAYING METER TYPE", [](P& p) -> int& { return p.meterScale; }},
    {IniFile::kOptions, kMeter, "SHOW LABELS", [](P& p) -> int& { return p.meterLabels; }},
    {IniFile::kDisplay, kDisplayItems, "HORIZONTAL RULER",
     [](P& p) -> int& { return p.display.horizontalRuler; }},
    {IniFile::kDisplay, kDisplayItems, "VERTICAL RULER",
     [](P& p) -> int& { return p.display.verticalRuler; }},
    {IniFile::kDisplay, kDisplayItems, "CENTER LINE",
     [](P& p) -> int& { return p.display.centreLine; }},
};

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

void KeepInside(int& value, int lowest, int highest, int otherwise) {
    if (value < lowest || value > highest) value = otherwise;
}

void MakeFlag(int& value) {
    value = value != 0;
}

void NormaliseWave(DocumentOptions& options) {
    for (int* device : {&options.playbackDeviceId, &options.recordDeviceId})
        KeepInside(*device, kLeastWaveDevice, kLastWaveDevice, kDefaultWaveDevice);
    for (int* frames : {&options.playbackBlockFrames, &options.recordBlockFrames})
        KeepInside(*frames, kLeastBlockFrames, kMostBlockFrames, CWavePlayer::kDefaultBlockFrames);
}

void NormaliseFlags(Preferences& p) {
    DocumentOptions& options = p.options;
    for (int* flag :
         {&options.displaySampleData, &options.displaySeeker, &options.openAndPlay,
          &options.openAndMaximize, &options.openAndFullTimeZoom, &options.applyAutoSkipMode,
          &options.saveUndo, &options.saveMarkers, &p.autoPlay, &p.meterLabels, &p.grid.timeGrid,
          &p.grid.levelGrid, &p.grid.timeLabels, &p.display.horizontalRuler,
          &p.display.verticalRuler, &p.display.centreLine})
        MakeFlag(*flag);
    // Other than its fellows it holds for the number 1 alone.
    options.playScrolling = options.playScrolling == 1;
}

void NormaliseGrid(GridSettings& grid) {
    grid.type = grid.type == 1;
    KeepInside(grid.location, 0, 1, 2);
    grid.widthSpacingMs = std::clamp(grid.widthSpacingMs, 0, kMostGridMs);
    grid.heightSpacingPercent = std::clamp(grid.heightSpacingPercent, 0, kMostGridPercent);
}

int ValueOf(const IntegerKey& key, Preferences preferences) {
    return key.value(preferences);
}

bool PutKeys(ProfileText& text, IniFile file, const Preferences& before, const Preferences& after) {
    return std::ranges::all_of(kKeys, [&](const IntegerKey& key) {
        const int value = ValueOf(key, after);
        return key.file != file || value == ValueOf(key, before) ||
               text.SetInteger(key.section, key.key, value);
    });
}

}  // namespace

Preferences Preferences::Read(const ProgramFolder& folder) {
    const ProfileText options = folder.Options().Read();
    const ProfileText display = folder.Display().Read();
    Preferences p;
    p.colours.Load(display);
    p.display = DisplaySettings::Read(display);
    p.grid = GridSettings::Read(options);
    p.options = DocumentOptions::Read(options);
    p.statusFormat = static_cast<int>(ReadStatusFormat(options));
    p.autoPlay = options.GetInteger(kOptions, "Auto Play");
    const MeterSettings meter = MeterSettings::Read(options);
    p.meterScale = static_cast<int>(meter.scale);
    p.meterLabels = meter.showLabels;
    NormaliseWave(p.options);
    NormaliseFlags(p);
    NormaliseGrid(p.grid);
    return p;
}

bool Preferences::operator==(const Preferences& other) const {
    return colours == other.colours && std::ranges::all_of(kKeys, [&](const IntegerKey& key) {
               return ValueOf(key, *this) == ValueOf(key, other);
           });
}

bool WriteChanges(const ProgramFolder& folder, const Preferences& before,
                  const Preferences& after) {
    const bool options = folder.Options().Change(
        [&](ProfileText& text) { return PutKeys(text, IniFile::kOptions, before, after); });
    const bool display = folder.Display().Change([&](ProfileText& text) {
        return PutKeys(text, IniFile::kDisplay, before, after) &&
               (after.colours == before.colours || PutColours(text, kColourSection, after.colours));
    });
    return options && display;
}

bool PutColours(ProfileText& display, std::string_view section, const ColourTable& colours) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (std::size_t slot = 0; slot < ColourTable::kSlots; ++slot)
        entries.emplace_back(kColourKeys[slot], ColourText(colours.At(slot)));
    return display.SetEntries(section, entries);
}

}  // namespace sonavel
