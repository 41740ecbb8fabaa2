// The view's transport commands: which part of the sound each of them plays.
#pragma once

#include "view/sound_view.h"

namespace sonavel {

// Each returns false when nothing was started, stopped or paused.
bool Playback(CSoundView& view);
bool PlayLooped(CSoundView& view);
bool PlayToEnd(CSoundView& view);
bool StopTransport(CSoundView& view);
bool PauseTransport(CSoundView& view);
// Stops playing or recording, or plays.
bool PressSpace(CSoundView& view);
// The sound as it would be without the selection, or the second and a half on both sides of the
// cursor.
bool PreviewCut(CSoundView& view);
bool PreRollToCursor(CSoundView& view);

}  // namespace sonavel
