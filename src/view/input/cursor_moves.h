// How keys and commands move the cursor and change the selection of a view.
#pragma once

#include <cstdint>

#include "view/sound_view.h"

namespace sonavel {

inline constexpr int kFarMovePixels = 25;

enum class MoveMode { kCollapse, kExtend };

// Each returns false, and does nothing, for an empty sound. Pixels are at least 1.
bool MoveCursorLeft(CSoundView& view, int pixels, MoveMode mode);
bool MoveCursorRight(CSoundView& view, int pixels, MoveMode mode);
bool MoveCursorToStart(CSoundView& view);
bool MoveCursorToEnd(CSoundView& view);
// Extends the selection, or the cursor's place without one, to the start or the end of the sound.
bool SelectToStart(CSoundView& view);
bool SelectToEnd(CSoundView& view);
bool SelectAll(CSoundView& view);
// Between the markers around the frame, the sound's ends standing for markers that are not there.
bool SelectBetweenMarkers(CSoundView& view, std::uint32_t frame);
// Sets the cursor, drops the selection and scrolls there.
bool GoToFrame(CSoundView& view, std::uint32_t frame);
// The dialog "Go to Cursor".
bool AskAndGoToCursor(CSoundView& view);

}  // namespace sonavel
