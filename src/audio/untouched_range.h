// A sound's range as it is, for those who hear it live beside what is made of it.
#pragma once

#include <span>
#include <vector>

#include "audio/live_player.h"
#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

class UntouchedRange : public LiveRenderer {
  public:
    // The sound must outlive it and stay as it is.
    UntouchedRange(const Sound& sound, FrameRange range) : sound_(sound), range_(range) {}

    // A mono sound on both sides.
    void Render(std::uint32_t first, std::span<float> pairs) override;

  private:
    const Sound& sound_;
    FrameRange range_;
    std::vector<float> channel_;
};

// What makes renderers of a single sound's range.
class LiveRangeMaker : public LiveMaker {
  public:
    LiveRange Range() const override { return {range_.Frames(), sound_.GetSamplesPerSecond()}; }
    std::unique_ptr<LiveRenderer> MakeUntouched() override {
        return std::make_unique<UntouchedRange>(sound_, range_);
    }

  protected:
    // The sound must outlive it and stay as it is; the range is not empty.
    LiveRangeMaker(const Sound& sound, FrameRange range) : sound_(sound), range_(range) {}

    const Sound& HeardSound() const { return sound_; }
    FrameRange HeardFrames() const { return range_; }

  private:
    const Sound& sound_;
    FrameRange range_;
};

}  // namespace sonavel
