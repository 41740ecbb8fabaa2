// The view's transport commands: which part of the sound each of them plays.
#pragma once

#include "view/sound_view.h"

namespace sonavel {

// Each fails when nothing was started, stopped or paused.
Outcome Playback(CSoundView& view);
Outcome PlayLooped(CSoundView& view);
Outcome PlayToEnd(CSoundView& view);
// While it is played: from the cursor instead, looped or not as before.
Outcome GoOnFromCursor(CSoundView& view);
Outcome StopTransport(CSoundView& view);
Outcome PauseTransport(CSoundView& view);
// Stops playing or recording, or plays.
Outcome PressSpace(CSoundView& view);
// The sound as it would be without the selection, or the second and a half on both sides of the
// cursor.
Outcome PreviewCut(CSoundView& view);
Outcome PreRollToCursor(CSoundView& view);

}  // namespace sonavel
