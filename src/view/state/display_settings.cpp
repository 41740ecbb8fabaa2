#include "view/state/display_settings.h"

namespace sonavel {
namespace {

constexpr std::string_view kDisplayItems = "__SOUND_DISPLAY_ITEMS";
constexpr std::string_view kGridItems = "__SOUND_GRID_DISPLAY_ITEMS";
constexpr std::string_view kGridOptions = "__SOUND_GRID_OPTIONS";
constexpr std::string_view kOptions = "__SOUND_OPTIONS";
constexpr std::string_view kStatusFormatKey = "Status Format";

}  // namespace

DisplaySettings DisplaySettings::Read(const ProfileText& display) {
    DisplaySettings settings;
    settings.horizontalRuler = display.GetInteger(kDisplayItems, "HORIZONTAL RULER");
    settings.verticalRuler = display.GetInteger(kDisplayItems, "VERTICAL RULER");
    settings.centreLine = display.GetInteger(kDisplayItems, "CENTER LINE");
    return settings;
}

GridSettings GridSettings::Read(const ProfileText& options) {
    GridSettings settings;
    settings.timeGrid = options.GetInteger(kGridItems, "WIDTH GRID");
    settings.levelGrid = options.GetInteger(kGridItems, "HEIGHT GRID");
    settings.timeLabels = options.GetInteger(kGridItems, "PRESENT LOCATION");
    settings.type = options.GetInteger(kGridOptions, "GRID TYPE");
    settings.location = options.GetInteger(kGridOptions, "GRID LOCATION");
    settings.widthSpacingMs = options.GetInteger(kGridOptions, "GRID WIDTH SPACING");
    settings.heightSpacingPercent = options.GetInteger(kGridOptions, "GRID HEIGHT SPACING");
    return settings;
}

GridPlace GridSettings::Place() const {
    if (location == 1) return GridPlace::kBehindWaveform;
    return location == 0 ? GridPlace::kInFront : GridPlace::kNowhere;
}

StatusFormat ReadStatusFormat(const ProfileText& options) {
    const int number = options.GetInteger(kOptions, kStatusFormatKey);
    return number < 0 || number > 2 ? StatusFormat::kTime : static_cast<StatusFormat>(number);
}

bool WriteStatusFormat(ProfileFile& options, StatusFormat format) {
    return options.SetInteger(kOptions, kStatusFormatKey, static_cast<int>(format));
}

}  // namespace sonavel
