// The strip of markers below the waveform as plain numbers, in client coordinates.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sound/marker_list.h"
#include "view/draw/text_width.h"
#include "view/state/pixel_map.h"
#include "view/state/rectangle.h"

namespace sonavel {

// A marker's flag stands from its frame's column on, so wide.
inline constexpr int kMarkerFlagWidth = 6;

struct MarkerFlag {
    std::uint32_t id = 0;
    Rectangle flag;
    Rectangle region;   // the bar of a marked region; empty without one
    std::string label;  // as a person sees it; empty where it has no room
    int labelX = 0;
    int labelEnd = 0;  // where the next flag or the strip's end cuts the label
};

// In the order of the list, so that a later flag is drawn over an earlier one. Flags out of sight
// are left out, their regions are not. Of two labels that would meet, the one further right is left
// out.
std::vector<MarkerFlag> LayOutMarkerStrip(const Rectangle& strip, const PixelMap& map,
                                          const MarkerList& markers, const TextWidth& textWidth);

}  // namespace sonavel
