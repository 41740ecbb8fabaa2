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
