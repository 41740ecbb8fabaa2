#include "view/state/display_settings.h"

namespace sonavel {

DisplaySettings DisplaySettings::Read(const SettingValues& display) {
    return {
        .horizontalRuler = display[SettingId::kHorizontalRuler],
        .verticalRuler = display[SettingId::kVerticalRuler],
        .centreLine = display[SettingId::kCentreLine],
        .picture = static_cast<SoundPicture>(
            RowOf(SettingId::kSoundPicture).Effective(display[SettingId::kSoundPicture])),
        .overview = static_cast<OverviewOf>(
            RowOf(SettingId::kOverview).Effective(display[SettingId::kOverview])),
    };
}

bool WriteSoundPicture(ProfileFile& display, SoundPicture picture) {
    return WriteNumber(display, SettingId::kSoundPicture, static_cast<int>(picture));
}

bool WriteOverview(ProfileFile& display, OverviewOf overview) {
    return WriteNumber(display, SettingId::kOverview, static_cast<int>(overview));
}

GridSettings GridSettings::Read(const SettingValues& options) {
    return {
        .timeGrid = options[SettingId::kTimeGrid],
        .levelGrid = options[SettingId::kLevelGrid],
        .timeLabels = options[SettingId::kTimeLabels],
        .type = options[SettingId::kGridType],
        .location = options[SettingId::kGridLocation],
        .widthSpacingMs = options[SettingId::kGridWidthSpacing],
        .heightSpacingPercent = options[SettingId::kGridHeightSpacing],
    };
}

GridPlace GridSettings::Place() const {
    if (location == 1) return GridPlace::kBehindWaveform;
    return location == 0 ? GridPlace::kInFront : GridPlace::kNowhere;
}

StatusFormat ReadStatusFormat(const SettingValues& options) {
    const int number = options[SettingId::kStatusFormat];
    return static_cast<StatusFormat>(RowOf(SettingId::kStatusFormat).Effective(number));
}

bool WriteStatusFormat(ProfileFile& options, StatusFormat format) {
    return WriteNumber(options, SettingId::kStatusFormat, static_cast<int>(format));
}

}  // namespace sonavel
