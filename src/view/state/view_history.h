// Where a view has been: the zooms before the present one, and the selections that were made.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "view/state/scroll_state.h"
#include "view/state/selection.h"

namespace sonavel {

// What was in sight, and under which conditions its scroll state can be had again as it was.
struct SeenPlace {
    ScrollState state;
    std::uint32_t frameCount = 0;
    int width = 0;  // of the waveform, pixels
    FrameRange shown;

    bool operator==(const SeenPlace&) const = default;
};

// Back and forth between places, as through the pages of a browser.
class ZoomHistory {
  public:
    static constexpr std::size_t kMost = 50;

    // The zoom is about to be changed; what lay ahead is forgotten.
    void Leave(const SeenPlace& place);
    bool HasBack() const { return !back_.empty(); }
    bool HasForward() const { return !forward_.empty(); }
    // Nothing where there is none; the present place is then not kept.
    std::optional<SeenPlace> Back(const SeenPlace& now);
    std::optional<SeenPlace> Forward(const SeenPlace& now);

  private:
    std::deque<SeenPlace> back_;
    std::vector<SeenPlace> forward_;
};

// The last selections, which come back one after the other and then begin again.
class SelectionHistory {
  public:
    static constexpr std::size_t kMost = 10;

    // Takes the former selection where the new one is another one, with neither end in common; a
    // drag and an extension go on with the same.
    void Change(Selection before, Selection after);
    bool IsEmpty() const { return past_.empty(); }
    // The present one, if any, goes behind all others.
    std::optional<Selection> Last(Selection now);

  private:
    std::deque<Selection> past_;  // the last one first
};

}  // namespace sonavel
