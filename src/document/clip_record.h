// The clip that was last read from the clipboard. There is one record for the whole program: the
// application owns it and hands it to whatever copies and pastes.
#pragma once

#include "sound/sound.h"

namespace sonavel {

// A sound of whole frames without markers, of a format that the editor can hold when present.
struct ClipRecord : Sound {
    bool present = false;
};

}  // namespace sonavel
