#include "app/pane_widths.h"

#include <algorithm>
#include <array>

namespace sonavel {

namespace {

struct Claim {
    const PaneWish& wish;
    int& width;
};

// What matters most comes first.
std::array<Claim, 4> Order(const PaneWishes& wishes, PaneWidths& widths, int& prompt) {
    const Claim text{wishes.prompt, prompt};
    const Claim state{wishes.state, widths.state};
    const Claim selection{wishes.selection, widths.selection};
    const Claim zoom{wishes.zoom, widths.zoom};
    if (wishes.sound == PaneWishes::Sound::kBusy) return {text, state, selection, zoom};
    return {text, selection, state, zoom};
}

}  // namespace

PaneWidths SharePanes(const PaneWishes& wishes) {
    PaneWidths widths;
    int prompt = 0;
    int room = std::max(wishes.room, 0);
    const auto order = Order(wishes, widths, prompt);
    for (const Claim& claim : order) {
        const int width = std::min(claim.wish.needed, room);
        claim.width = width < claim.wish.needed && width < wishes.least ? 0 : width;
        room -= claim.width;
    }
    for (const Claim& claim : order) {
        const int more = std::clamp(claim.wish.usual - claim.width, 0, room);
        // What was left out stays out.
        if (claim.width == 0 && claim.wish.needed > 0) continue;
        claim.width += more;
        room -= more;
    }
    return widths;
}

}  // namespace sonavel
