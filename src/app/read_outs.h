// What the status bar and the bars say of the place in the active sound, and of what it does.
#pragma once

#include <string>

#include "view/sound_view.h"

namespace sonavel {

// All texts empty without a sound.
struct ReadOuts {
    bool isBusy = false;  // playing or recording, so that they change by themselves
    std::string state;
    std::string selection;  // the place of the cursor, or what is played, when nothing is selected
    std::string zoom;
    std::string time;  // as the transport bar has it: while recording, the end of the take
    std::string ratio;
};

ReadOuts ReadOutsOf(const CSoundView& view);

}  // namespace sonavel
