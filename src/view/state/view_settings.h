// All that a view reads from the initialisation files.
#pragma once

#include <array>
#include <cstddef>
#include <variant>

#include "view/draw/colour_table.h"
#include "view/state/display_settings.h"
#include "view/state/spectrogram_settings.h"
#include "view/state/view_geometry.h"

namespace sonavel {

// What a command of the view turns on and off, for all views and for the next start.
enum class ViewSwitch {
    kSnapping,           // what the mouse selects goes to where the sound passes through zero
    kPlayFollowsClicks,  // while it is played, a click has it go on there
};
enum class Turned { kOff, kOn };

SettingId SettingOf(ViewSwitch which);

struct SwitchChoice {
    ViewSwitch which = ViewSwitch::kSnapping;
    Turned turned = Turned::kOff;
};
// What is chosen in one view and holds for all of them.
using ViewChoice = std::variant<StatusFormat, SpectrogramSettings, SwitchChoice, OverviewOf>;

struct ViewSettings {
    DisplaySettings display;
    GridSettings grid;
    StatusFormat statusFormat = StatusFormat::kTime;
    ColourTable colours;
    SpectrogramSettings spectrogram;
    std::array<Turned, 2> switches{};  // by ViewSwitch

    bool IsOn(ViewSwitch which) const {
        return switches[static_cast<std::size_t>(which)] == Turned::kOn;
    }

    void Take(const ViewChoice& choice);
    // A colour that the file does not name stays as it is.
    void Load(const ProfileText& displayFile, const ProfileText& optionsFile);
    // What a client area of that size is to be divided into.
    GeometryRequest Geometry(int width, int height, SoundPicture picture) const;
};

}  // namespace sonavel
