// How keys and commands move the cursor and change the selection of a view.
#pragma once

#include <cstdint>

#include "view/sound_view.h"

namespace sonavel {

inline constexpr int kFarMovePixels = 25;

enum class MoveMode { kCollapse, kExtend };

// Each fails, and does nothing, for an empty sound. Pixels are at least 1.
Outcome MoveCursorLeft(CSoundView& view, int pixels, MoveMode mode);
Outcome MoveCursorRight(CSoundView& view, int pixels, MoveMode mode);
Outcome MoveCursorToStart(CSoundView& view);
Outcome MoveCursorToEnd(CSoundView& view);
// Extends the selection, or the cursor's place without one, to the start or the end of the sound.
Outcome SelectToStart(CSoundView& view);
Outcome SelectToEnd(CSoundView& view);
Outcome SelectAll(CSoundView& view);
// The shortest region around the frame; where there is none, between the markers around the frame,
// the sound's ends standing for markers that are not there.
Outcome SelectBetweenMarkers(CSoundView& view, std::uint32_t frame);
// Sets the cursor, drops the selection and scrolls there.
Outcome GoToFrame(CSoundView& view, std::uint32_t frame);
// What OK in the dialog "Go to Cursor" does.
Outcome GoToCursor(CSoundView& view, const GoToChoice& choice);

}  // namespace sonavel
