// A scene: sounds that are placed each in its own way and start when they like, mixed into one
// stereo sound as long as the last of them.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/progress_window.h"
#include "sound/sound.h"
#include "spatial/placing.h"

namespace sonavel {

struct ScenePart {
    const Sound& sound;  // its channel 0
    Placing placing;
    std::uint32_t start = 0;  // frames of the scene
    double gain = 0;          // dB
};

class SceneMix {
  public:
    // `rate` in frames a second; sounds of other rates are resampled.
    SceneMix(std::uint32_t rate, Listener& listener, ProgressFactory& progress)
        : rate_(rate), listener_(listener), progress_(progress) {}

    // Fails for an empty sound, a scene that would become too long, and without memory; what was
    // mixed before stays.
    Outcome Add(const ScenePart& part);
    // 32-bit float when one of the sounds is, else 16-bit, with the peak of the whole brought down
    // to full scale where it is above. The mix is used up.
    Result<Sound> Finish();

  private:
    Outcome AddAtRate(const ScenePart& part, const Sound& sound);
    Outcome Render(const ScenePart& part, const Sound& sound, std::span<float> pairs);

    std::uint32_t rate_;
    Listener& listener_;
    ProgressFactory& progress_;
    std::vector<float> pairs_;  // in units of 16 bits
    bool hasFloats_ = false;
    int parts_ = 0;
};

}  // namespace sonavel
