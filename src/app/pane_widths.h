// How the panes of the status bar share a width that is too small for all of them: what can be read
// elsewhere goes first, what happens right now and where stays whole the longest.
#pragma once

#include <cstdint>

namespace sonavel {

// All in pixels.
struct PaneWish {
    int needed = 0;  // for the text that it shows
    int usual = 0;   // for nearly any, so that panes keep their places while texts change
};

struct PaneWishes {
    int room = 0;     // of all panes and the prompt together
    int least = 0;    // a pane that needs more than it gets, and gets less than this, is left out
    PaneWish prompt;  // or the note in its place
    PaneWish state;
    PaneWish selection;
    PaneWish zoom;

    enum class Sound : std::uint8_t { kAtRest, kBusy };  // busy while playing or recording
    Sound sound = Sound::kAtRest;
};

struct PaneWidths {
    int state = 0;
    int selection = 0;
    int zoom = 0;

    friend bool operator==(const PaneWidths&, const PaneWidths&) = default;
};

// The prompt has what the others leave.
PaneWidths SharePanes(const PaneWishes& wishes);

}  // namespace sonavel
