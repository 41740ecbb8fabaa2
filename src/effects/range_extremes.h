// The greatest and the least sample of a range, over all channels.
#pragma once

#include "sound/frame_range.h"
#include "sound/sample_scan.h"
#include "sound/sound.h"

namespace sonavel {

// As levels; both 0 for an empty range. The range lies inside the sound.
SampleExtremes ExtremesOf(const Sound& sound, FrameRange range);

}  // namespace sonavel
