// A sound's range as it is, for those who hear it live beside what is made of it.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "audio/live_loop.h"
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

}  // namespace sonavel
