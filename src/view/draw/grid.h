// The time and level grid of one lane as plain numbers: line segments and labels in client
// coordinates.
#pragma once

#include <string>
#include <vector>

#include "view/draw/rulers.h"
#include "view/draw/text_width.h"
#include "view/state/display_settings.h"
#include "view/state/pixel_map.h"
#include "view/state/rectangle.h"
#include "view/state/scroll_state.h"

namespace sonavel {

// Horizontal or vertical; the second point is outside, as that of a half-open range.
struct GridLine {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;

    bool operator==(const GridLine&) const = default;
};

// The text is centred in its rectangle.
struct GridLabel {
    Rectangle area;
    std::string text;
};

struct Grid {
    std::vector<GridLine> lines;
    std::vector<GridLabel> labels;
};

struct GridRequest {
    Rectangle lane;
    PixelMap map;
    ScrollState vertical;
    std::uint32_t rate = 0;  // CWave::GetRate()
    GridSettings settings;
    StatusFormat format = StatusFormat::kTime;  // of the labels at the ruler's ticks
};

// What the settings show, time lines first; where they show it is for GridSettings::Place(). Empty
// without a sound.
Grid LayOutGrid(const GridRequest& request, const TextWidth& textWidth);

}  // namespace sonavel
