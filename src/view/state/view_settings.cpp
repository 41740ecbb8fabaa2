#include "view/state/view_settings.h"

namespace sonavel {

SettingId SettingOf(ViewSwitch which) {
    return which == ViewSwitch::kSnapping ? SettingId::kSnapToZero : SettingId::kPlayFollowsClicks;
}

void ViewSettings::Load(const ProfileText& displayFile, const ProfileText& optionsFile) {
    display = DisplaySettings::Read(displayFile);
    grid = GridSettings::Read(optionsFile);
    statusFormat = ReadStatusFormat(optionsFile);
    colours.Load(displayFile);
    spectrogram = SpectrogramSettings::Read(displayFile);
    for (const ViewSwitch which : {ViewSwitch::kSnapping, ViewSwitch::kPlayFollowsClicks})
        switches[static_cast<std::size_t>(which)] =
            StoredNumber(optionsFile, SettingOf(which)) != 0 ? Turned::kOn : Turned::kOff;
}

void ViewSettings::Take(const ViewChoice& choice) {
    if (const auto* format = std::get_if<StatusFormat>(&choice)) statusFormat = *format;
    if (const auto* look = std::get_if<SpectrogramSettings>(&choice)) spectrogram = *look;
    if (const auto* overview = std::get_if<OverviewOf>(&choice)) display.overview = *overview;
    if (const auto* one = std::get_if<SwitchChoice>(&choice))
        switches[static_cast<std::size_t>(one->which)] = one->turned;
}

GeometryRequest ViewSettings::Geometry(int width, int height, SoundPicture picture) const {
    const auto visibility = [](int shown) {
        return shown ? RulerVisibility::kShown : RulerVisibility::kHidden;
    };
    GeometryRequest request;
    request.client = {0, 0, width, height};
    request.horizontalRuler = visibility(display.horizontalRuler);
    request.verticalRuler = visibility(display.verticalRuler);
    request.picture = picture;
    return request;
}

}  // namespace sonavel
