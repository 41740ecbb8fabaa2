// All that a view reads from the initialisation files.
#pragma once

#include "view/draw/colour_table.h"
#include "view/state/display_settings.h"
#include "view/state/spectrogram_settings.h"
#include "view/state/view_geometry.h"

namespace sonavel {

struct ViewSettings {
    DisplaySettings display;
    GridSettings grid;
    StatusFormat statusFormat = StatusFormat::kTime;
    ColourTable colours;
    SpectrogramSettings spectrogram;

    // A colour that the file does not name stays as it is.
    void Load(const ProfileText& displayFile, const ProfileText& optionsFile);
    // What a client area of that size is to be divided into.
    GeometryRequest Geometry(int width, int height, SoundPicture picture) const;
};

}  // namespace sonavel
