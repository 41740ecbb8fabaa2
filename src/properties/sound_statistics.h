// What the properties of a sound show of its samples: per channel the peak, the RMS value, the
// constant offset and how many samples are clipped.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "platform/progress_window.h"
#include "sound/sound.h"

namespace sonavel {

// Values are levels: of whole numbers the samples, -32768..32767 or -127..128, of floats 2^23 for
// full scale.
struct ChannelStatistics {
    std::int32_t peak = 0;       // the first sample of the greatest magnitude
    std::int64_t peakFrame = 0;  // its frame
    double rms = 0;
    double offset = 0;                // the mean
    std::int64_t clippedSamples = 0;  // at full scale or beyond
};

struct SoundStatistics {
    std::int64_t frames = 0;
    unsigned channels = 0;
    std::int32_t reference = 0;                // the magnitude of full scale, 32768, 128 or 2^23
    std::array<ChannelStatistics, 2> channel;  // the first alone for a mono sound
};

// Of the whole sound, as it is while this runs: the progress lets the host's events through, so
// that the sound may have been replaced by a shorter one. Nothing when the person cancelled.
std::optional<SoundStatistics> MeasureSound(const Sound& wave, ProgressFactory& progress);

}  // namespace sonavel
