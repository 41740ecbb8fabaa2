// How loud a range of a sound is.
#pragma once

#include <optional>

#include "platform/outcome.h"
#include "platform/progress_window.h"
#include "sound/frame_range.h"
#include "sound/sound.h"

namespace sonavel {

struct SoundLoudness {
    std::optional<double> integrated;  // LUFS; nothing for silence and for less than 0.4 s
    double range = 0;                  // LU
    double truePeak = 0;               // shares of full scale
    double samplePeak = 0;
};

// Both peaks are of all channels. The window goes from 0 to `lastPercent`. Fails for a rate
// that cannot be measured.
Result<SoundLoudness> MeasureLoudness(const Sound& sound, FrameRange range,
                                      ProgressWindow& progress, int lastPercent = 100);

// 20 log10 (share), minus infinity for silence.
double DecibelsOfShare(double share);
double ShareOfDecibels(double decibels);

}  // namespace sonavel
