// The view's marker commands. Each of them is one edit with an undo step of its own, marks the
// sound modified and repaints what shows markers.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "view/sound_view.h"

namespace sonavel {

// Adds a marker at the cursor.
Outcome DropMarker(CSoundView& view);
// Positions and lengths are clamped to the sound. The id is that of the new marker.
std::uint32_t AddMarker(CSoundView& view, std::uint32_t position, std::string_view name,
                        std::uint32_t length);
// Fails when there is no marker of that id; an empty name keeps the old one.
Outcome SetMarker(CSoundView& view, std::uint32_t id, std::uint32_t position, std::string_view name,
                  std::uint32_t length);
Outcome RemoveMarker(CSoundView& view, std::uint32_t id);
// One move of a drag, nothing without a marker of that id. The document's EndMarkerEdit() makes one
// edit of the moves.
void DragMarker(CSoundView& view, std::uint32_t id, std::uint32_t position);

// What OK in the dialog "Marker" does: all the edits as one, or none of them.
Outcome EditMarkers(CSoundView& view, std::span<const MarkerEdit> edits);
// 0 without markers; the first of several at the same distance.
std::uint32_t NearestMarkerId(const CSoundView& view, std::uint32_t frame);

}  // namespace sonavel
