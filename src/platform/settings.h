// The table of what a person can set in Options.ini and Display.ini, one row each. Reading,
// writing, the pages of the preferences and the files as they are shipped come from it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "platform/profile_file.h"

namespace sonavel {

enum class SettingId : std::size_t {
    kPlaybackDevice,
    kPlaybackBlockFrames,
    kRecordDevice,
    kRecordBlockFrames,
    kDisplaySampleData,
    kDisplaySeeker,
    kOpenAndPlay,
    kOpenAndMaximize,
    kOpenAndFullTimeZoom,
    kApplyAutoSkipMode,
    kSaveUndo,
    kUndoMemory,
    kRecoveryRoom,
    kPlayScrolling,
    kPlayFollowsClicks,
    kSnapToZero,
    kSaveMarkers,
    kImportRefused,
    kStatusFormat,
    kAutoPlay,
    kUsedFolder,
    kGridType,
    kGridLocation,
    kGridWidthSpacing,
    kGridHeightSpacing,
    kTimeGrid,
    kLevelGrid,
    kTimeLabels,
    kMeterScale,
    kMeterLabels,
    kHorizontalRuler,
    kVerticalRuler,
    kCentreLine,
    kOverview,
    kSoundPicture,
    kSpectrumWindow,
    kSpectrumShape,
    kSpectrumScale,
    kSpectrumRange,
    kSpectrumPalette,
    kCount,
};

enum class SettingsFile { kOptions, kDisplay };

enum class SettingKind {
    kFlag,  // every number but 0 sets it
    kInteger,
    kText,
};

struct Setting {
    SettingId id;
    SettingsFile file;
    std::string_view section;
    std::string_view key;
    SettingKind kind;
    std::string_view shipped;  // the value in the file as it comes with the programs
    // One sentence for a person: above the key in the shipped file, and over its control.
    std::string_view explanation;
    // What a number can be, and what holds in place of another one; without `otherwise` that is the
    // nearest.
    int least = 0;
    int greatest = 0;
    std::optional<int> otherwise = {};

    bool Accepts(int number) const { return number >= least && number <= greatest; }
    // What holds when `stored` stands in the file.
    int Effective(int stored) const;
};

// In the order of the shipped files.
std::span<const Setting> AllSettings();
const Setting& RowOf(SettingId id);

// The numbers that stand in a file, whatever they are; 0 for missing keys and for texts.
class SettingValues {
  public:
    SettingValues() = default;
    SettingValues(const ProfileText& file);  // so that a file's text can be passed for its numbers

    int operator[](SettingId id) const { return numbers_[static_cast<std::size_t>(id)]; }
    int& operator[](SettingId id) { return numbers_[static_cast<std::size_t>(id)]; }
    bool operator==(const SettingValues&) const = default;

  private:
    std::array<int, static_cast<std::size_t>(SettingId::kCount)> numbers_{};
};

int StoredNumber(const ProfileText& file, SettingId id);
// False when the file cannot be written.
bool WriteNumber(ProfileFile& file, SettingId id, int number);

}  // namespace sonavel
