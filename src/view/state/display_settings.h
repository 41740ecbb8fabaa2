// The display and grid settings that a view reads from the initialisation files at its first show
// and whenever the preferences change. A missing key reads as 0.
#pragma once

#include "platform/settings.h"

namespace sonavel {

// What a view shows of its sound.
enum class SoundPicture { kWaveform = 0, kSpectrogram = 1, kBoth = 2 };

// Over which waveforms stands the strip with the whole sound.
enum class OverviewOf { kLongSounds = 0, kAllSounds = 1, kNoSound = 2 };

struct DisplaySettings {
    int horizontalRuler = 1;
    int verticalRuler = 1;
    int centreLine = 1;
    SoundPicture picture = SoundPicture::kWaveform;  // of a view that is shown first
    OverviewOf overview = OverviewOf::kLongSounds;

    static DisplaySettings Read(const SettingValues& display);
};

enum class GridPlace { kBehindWaveform, kInFront, kNowhere };

struct GridSettings {
    int timeGrid = 0;
    int levelGrid = 0;
    int timeLabels = 0;
    int type = 0;      // 1: at the ruler's ticks, else at the spacing in milliseconds
    int location = 0;  // 1 behind the waveform, 0 in front, else no grid
    int widthSpacingMs = 1000;
    int heightSpacingPercent = 50;  // of full scale

    static GridSettings Read(const SettingValues& options);
    GridPlace Place() const;
    bool operator==(const GridSettings&) const = default;
};

bool WriteSoundPicture(ProfileFile& display, SoundPicture picture);
bool WriteOverview(ProfileFile& display, OverviewOf overview);

enum class StatusFormat { kSample = 0, kTime = 1, kSecond = 2 };

// Another number than 0 to 2 reads as the time format.
StatusFormat ReadStatusFormat(const SettingValues& options);
bool WriteStatusFormat(ProfileFile& options, StatusFormat format);

}  // namespace sonavel
