// The strip of the markers below the waveform: where flags, labels and the bars of regions stand,
// and how they are painted.
#pragma once

#include <QPainter>
#include <optional>
#include <string>
#include <vector>

#include "sound/marker_list.h"
#include "view/colour_table.h"
#include "view/pixel_map.h"
#include "view/rectangle.h"
#include "view/text_width.h"

namespace sonavel {

struct MarkerSign {
    std::uint32_t id = 0;
    int x = 0;                    // of the flag's pole, in client coordinates
    std::optional<int> barRight;  // right end of the region's bar, outside
    int labelX = 0;
    std::string label;  // UTF-8; empty where it would touch the label before it
};

inline constexpr int kFlagWidth = 7;

// The signs that reach into the area, from left to right; of two at the same place the one added
// later stands behind. A label begins right of its flag.
std::vector<MarkerSign> LayOutMarkers(const Rectangle& area, const PixelMap& map,
                                      const MarkerList& markers, const TextWidth& textWidth);

QFont MarkerFont();
void PaintMarkerStrip(QPainter& painter, const Rectangle& area,
                      const std::vector<MarkerSign>& signs, const ColourTable& colours);

}  // namespace sonavel
