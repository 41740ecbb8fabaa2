// A placed source heard live: rendered as Apply does, over a range that is played again and again
// while the placing changes.
#pragma once

#include "audio/untouched_range.h"
#include "platform/latest_value.h"
#include "spatial/placing.h"

namespace sonavel {

// In what Live differs from what OK makes.
inline constexpr const char* kLivePlacingNote =
    "Live holds at full scale: the result may differ in level.";

class LivePlacing : public LiveRangeMaker {
  public:
    // The sound must outlive it and stay as it is; the range is not empty. The listener is used by
    // nobody else meanwhile.
    LivePlacing(const RangeInput& input, Listener& listener)
        : LiveRangeMaker(input.sound, input.range), listener_(listener) {}

    // On one thread, beside the one that makes renderers. A placing without points is not heard.
    void Set(Placing placing) { placing_.Give(std::move(placing)); }

    std::unique_ptr<LiveRenderer> MakeLatest() override;

  private:
    Listener& listener_;
    LatestValue<Placing> placing_;
};

}  // namespace sonavel
