// An effect heard live: the processor that Apply uses, over a range that is played again and again
// while the values change.
#pragma once

#include <span>
#include <vector>

#include "audio/untouched_range.h"
#include "effects/effect_table.h"
#include "platform/latest_value.h"
#include "sound/frame_range.h"

namespace sonavel {

// Why the effect cannot be heard live on this sound; null when it can.
const char* LiveRefusal(const Effect& effect, const Sound& sound);
// In what Live differs from what OK makes; null when in nothing.
const char* LiveNote(const Effect& effect);

class LiveEffect : public LiveRangeMaker {
  public:
    // The sound must outlive it and stay as it is. The range is not empty, and the effect none that
    // is refused.
    LiveEffect(const Effect& effect, const Sound& sound, FrameRange range)
        : LiveRangeMaker(sound, range), effect_(effect) {}

    // One value for each parameter. On one thread, beside the one that makes renderers of them.
    void Set(std::vector<double> values) { values_.Give(std::move(values)); }

    std::unique_ptr<LiveRenderer> MakeLatest() override;

  private:
    const Effect& effect_;
    LatestValue<std::vector<double>> values_;
};

}  // namespace sonavel
