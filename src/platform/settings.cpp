#include "platform/settings.h"

#include <algorithm>

#include "platform/wave_device.h"

namespace sonavel {
namespace {

constexpr auto kOptions = SettingsFile::kOptions;
constexpr auto kDisplay = SettingsFile::kDisplay;
constexpr auto kFlag = SettingKind::kFlag;
constexpr auto kInteger = SettingKind::kInteger;

constexpr int kMostWaveDevice = 256;
constexpr int kLeastBlockFrames = 128;
constexpr int kMostBlockFrames = 32767;

constexpr std::string_view kWave = "__SOUND_WAVE_OPTIONS";
constexpr std::string_view kGeneral = "__SOUND_GENERAL_OPTIONS";
constexpr std::string_view kStatus = "__SOUND_OPTIONS";
constexpr std::string_view kFolders = "__SOUND_USED_FOLDER";
constexpr std::string_view kGridForm = "__SOUND_GRID_OPTIONS";
constexpr std::string_view kGridItems = "__SOUND_GRID_DISPLAY_ITEMS";
constexpr std::string_view kMeter = "__SOUND_PLAY_METER";
constexpr std::string_view kItems = "__SOUND_DISPLAY_ITEMS";
constexpr std::string_view kSpectrogram = "__SOUND_SPECTROGRAM";

// clang-format off
constexpr Setting kRows[] = {
    {SettingId::kPlaybackDevice, kOptions, kWave, "PLAYBACK DEVICE ID", kInteger, "-1",
     "The number of the device that plays: -1 is the system's default, -2 none.",
     kNoWaveDevice, kMostWaveDevice, kDefaultWaveDevice},
    {SettingId::kPlaybackBlockFrames, kOptions, kWave, "PLAYBACK BUFFER SIZE", kInteger, "1024",
     "Frames in a block that is played, 128 to 32767: fewer follow faster, more break off less.",
     kLeastBlockFrames, kMostBlockFrames, kDefaultBlockFrames},
    {SettingId::kRecordDevice, kOptions, kWave, "RECORD DEVICE ID", kInteger, "-1",
     "The number of the device that records: -1 is the system's default, -2 none.",
     kNoWaveDevice, kMostWaveDevice, kDefaultWaveDevice},
    {SettingId::kRecordBlockFrames, kOptions, kWave, "RECORD BUFFER SIZE", kInteger, "1024",
     "Frames in a block that is recorded, 128 to 32767.",
     kLeastBlockFrames, kMostBlockFrames, kDefaultBlockFrames},
    {SettingId::kDisplaySampleData, kOptions, kGeneral, "DISPLAY SAMPLE DATA", kFlag, "1",
     "The status bar shows the sample values under the cursor."},
    {SettingId::kDisplaySeeker, kOptions, kGeneral, "DISPLAY SEEKER", kFlag, "1",
     "A line in the waveform shows what is being played."},
    {SettingId::kOpenAndPlay, kOptions, kGeneral, "OPEN AND PLAY", kFlag, "0",
     "A sound is played as soon as it is opened."},
    {SettingId::kOpenAndMaximize, kOptions, kGeneral, "OPEN AND MAXIMIZE", kFlag, "1",
     "The window of a sound that is opened fills the main window."},
    {SettingId::kOpenAndFullTimeZoom, kOptions, kGeneral, "OPEN AND FULL TIME ZOOM", kFlag, "0",
     "A sound is first shown with one pixel to a frame instead of whole."},
    {SettingId::kApplyAutoSkipMode, kOptions, kGeneral, "APPLY AUTO SKIP MODE", kFlag, "1",
     "A switch of the drawing's speed that is kept in the file; the drawing needs none."},
    // Spelled so in every file that exists.
    {SettingId::kSaveUndo, kOptions, kGeneral, "SAVE UNDO REDO INFOMATION", kFlag, "1",
     "Edits can be undone; without, they take no memory for it."},
    {SettingId::kUndoMemory, kOptions, kGeneral, "UNDO MEMORY", kInteger, "0",
     "Megabytes of memory for the undo steps of a sound, older ones go to the disk; 0 is a quarter "
     "of what is free at the start.",
     0, 1048576, 0},
    {SettingId::kRecoveryRoom, kOptions, kGeneral, "RECOVERY ROOM", kInteger, "0",
     "Megabytes of the disk that all unsaved work may take up for its recovery; 0 is half of what "
     "is free at the start.",
     0, 16777216, 0},
    {SettingId::kPlayScrolling, kOptions, kGeneral, "PLAY SCROLLING", kInteger, "1",
     "While it is played, the waveform scrolls along.", 0, 1, 0},
    {SettingId::kPlayFollowsClicks, kOptions, kGeneral, "PLAY FOLLOWS CLICKS", kFlag, "0",
     "While it is played, a click in the waveform has it go on there."},
    {SettingId::kSnapToZero, kOptions, kGeneral, "SNAP TO ZERO CROSSINGS", kFlag, "0",
     "What the mouse selects goes to where the sound passes through zero."},
    {SettingId::kSaveMarkers, kOptions, kGeneral, "마커 저장", kFlag, "1",
     "Markers are written with a WAV file."},
    {SettingId::kImportRefused, kOptions, kGeneral, "IMPORT REFUSED FILES", kFlag, "0",
     "Files that Open refuses are imported without a question."},
    {SettingId::kStatusFormat, kOptions, kStatus, "Status Format", kInteger, "1",
     "Positions and lengths are shown as 0 sample numbers, 1 time, 2 seconds.", 0, 2, 1},
    {SettingId::kAutoPlay, kOptions, kStatus, "Auto Play", kFlag, "0",
     "Samples are played as they are chosen in the sample file database."},
    {SettingId::kUsedFolder, kOptions, kFolders, "Used Folder", SettingKind::kText, "",
     "The folder that a sound was saved to last."},
    {SettingId::kGridType, kOptions, kGridForm, "GRID TYPE", kInteger, "0",
     "Lines of the time grid stand 0 every so many milliseconds, 1 at the ruler's ticks.", 0, 1, 0},
    {SettingId::kGridLocation, kOptions, kGridForm, "GRID LOCATION", kInteger, "1",
     "The grid is drawn 0 in front of the waveform, 1 behind it, 2 nowhere.", 0, 2, 2},
    {SettingId::kGridWidthSpacing, kOptions, kGridForm, "GRID WIDTH SPACING", kInteger, "1000",
     "Milliseconds from one line of the time grid to the next.", 0, 3600000},
    {SettingId::kGridHeightSpacing, kOptions, kGridForm, "GRID HEIGHT SPACING", kInteger, "50",
     "Percent of full scale from one line of the level grid to the next.", 0, 200},
    {SettingId::kTimeGrid, kOptions, kGridItems, "WIDTH GRID", kFlag, "0",
     "The waveform has lines at points in time."},
    {SettingId::kLevelGrid, kOptions, kGridItems, "HEIGHT GRID", kFlag, "0",
     "The waveform has lines at levels."},
    {SettingId::kTimeLabels, kOptions, kGridItems, "PRESENT LOCATION", kFlag, "1",
     "The lines of the time grid say their time."},
    {SettingId::kMeterScale, kOptions, kMeter, "PLAYING METER TYPE", kInteger, "1",
     "The play meter starts with a scale from 0 -30 dB, 1 -60 dB, 2 -90 dB.", 0, 2, 1},
    {SettingId::kMeterLabels, kOptions, kMeter, "SHOW LABELS", kFlag, "1",
     "The play meter shows levels as numbers."},
    {SettingId::kHorizontalRuler, kDisplay, kItems, "HORIZONTAL RULER", kFlag, "1",
     "Below the waveform stands a ruler of time."},
    {SettingId::kVerticalRuler, kDisplay, kItems, "VERTICAL RULER", kFlag, "1",
     "Beside the waveform stands a ruler of levels."},
    {SettingId::kCentreLine, kDisplay, kItems, "CENTER LINE", kFlag, "1",
     "Every channel has a line at level 0."},
    {SettingId::kOverview, kDisplay, kItems, "OVERVIEW", kInteger, "0",
     "A strip over the waveform shows the whole sound: 0 of sounds longer than ten minutes, 1 of "
     "all, 2 of none.",
     0, 2, 0},
    {SettingId::kSoundPicture, kDisplay, kSpectrogram, "SOUND PICTURE", kInteger, "0",
     "Sounds are first shown as 0 waveform, 1 spectrogram, 2 both.", 0, 2, 0},
    {SettingId::kSpectrumWindow, kDisplay, kSpectrogram, "WINDOW LENGTH", kInteger, "2048",
     "Frames that a column of the spectrogram is computed from, 256 to 16384, a power of two: more "
     "tell frequencies apart better, fewer times.",
     256, 16384, 2048},
    {SettingId::kSpectrumShape, kDisplay, kSpectrogram, "WINDOW SHAPE", kInteger, "0",
     "How these frames are faded in and out: 0 Hann, 1 Blackman-Harris, which lets loud tones hide "
     "less beside them.",
     0, 1, 0},
    {SettingId::kSpectrumScale, kDisplay, kSpectrogram, "FREQUENCIES", kInteger, "0",
     "Frequencies of the spectrogram stand 0 evenly, 1 by octaves, 2 by mel, as they are heard "
     "apart.",
     0, 2, 0},
    {SettingId::kSpectrumRange, kDisplay, kSpectrogram, "RANGE", kInteger, "90",
     "Decibels below full scale at which the spectrogram is darkest.", 20, 200, 90},
    {SettingId::kSpectrumPalette, kDisplay, kSpectrogram, "PALETTE", kInteger, "0",
     "Colors of the spectrogram: 0 ember, 1 ice.", 0, 1, 0},
};
// clang-format on

constexpr bool RowsStandByTheirIds() {
    for (std::size_t i = 0; i < std::size(kRows); ++i)
        if (static_cast<std::size_t>(kRows[i].id) != i) return false;
    return std::size(kRows) == static_cast<std::size_t>(SettingId::kCount);
}
static_assert(RowsStandByTheirIds());

}  // namespace

int Setting::Effective(int stored) const {
    if (kind == SettingKind::kFlag) return stored != 0;
    return Accepts(stored) ? stored : otherwise.value_or(std::clamp(stored, least, greatest));
}

std::span<const Setting> AllSettings() {
    return kRows;
}

const Setting& RowOf(SettingId id) {
    return kRows[static_cast<std::size_t>(id)];
}

SettingValues::SettingValues(const ProfileText& file) {
    for (const Setting& row : kRows)
        if (row.kind != SettingKind::kText) (*this)[row.id] = StoredNumber(file, row.id);
}

int StoredNumber(const ProfileText& file, SettingId id) {
    return file.GetInteger(RowOf(id).section, RowOf(id).key);
}

bool WriteNumber(ProfileFile& file, SettingId id, int number) {
    return file.SetInteger(RowOf(id).section, RowOf(id).key, number);
}

}  // namespace sonavel
