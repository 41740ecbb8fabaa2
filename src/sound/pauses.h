// Pauses in a sound: where it stays quiet for long enough, and what sounds between them.
#pragma once

#include <cstdint>
#include <vector>

#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

struct PauseRule {
    double threshold = -40;        // dB of full scale; what stays below it on all channels is quiet
    std::uint32_t leastPause = 0;  // frames; shorter quiet belongs to the sound around it
    std::uint32_t leastSound = 0;  // frames; shorter sound belongs to the pause around it
};

struct PausesFound {
    std::vector<FrameRange> sounds;  // in order, from the first loud frame to behind the last one
    std::vector<FrameRange>
        pauses;  // before, between and behind them, none shorter than leastPause
};

// Looks at the frames of the range that the sound has. Where nothing is loud the range is one
// pause. Throws std::bad_alloc.
PausesFound FindPauses(const Sound& sound, FrameRange range, const PauseRule& rule);

}  // namespace sonavel
