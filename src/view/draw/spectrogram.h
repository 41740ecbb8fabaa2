// The spectrogram of a sound as numbers: for each column of a picture how loud the sound is at the
// frequency of each row. The frames are read first, then all else is computed from values alone, on
// any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/outcome.h"
#include "sound/frame_range.h"
#include "sound/power_spectrum.h"
#include "sound/sound.h"

namespace sonavel {

enum class FrequencyScale : std::uint8_t {
    kLinear,
    kLogarithmic,  // from kLowestLogFrequency on; the lowest row stands for all below it, too
    kMel,          // 2595 log10(1 + f / 700)
};
inline constexpr double kLowestLogFrequency = 20;  // Hz

struct SpectrogramLook {
    unsigned windowFrames = 2048;  // as PowerSpectrum takes them
    WindowShape shape = WindowShape::kHann;
    FrequencyScale scale = FrequencyScale::kLinear;
    double rangeDecibels = 90;  // from what is drawn darkest up to full scale

    bool operator==(const SpectrogramLook&) const = default;
};

// What a height stands for, from 0 at the bottom to 1 at the top, which is `highest`; and back,
// held within 0 to 1. Both frequencies in Hz, highest above kLowestLogFrequency.
double FrequencyAt(FrequencyScale scale, double height, double highest);
double HeightOf(FrequencyScale scale, double frequency, double highest);

// Columns side by side: windows of column c begin in the middle at frame firstFrame + c *
// framesPerColumn and stand evenly up to the next column.
struct SpectrogramColumns {
    double firstFrame = 0;
    double framesPerColumn = 1;  // above 0
    unsigned columns = 0;
};

// The frames that columns are computed from, as shares of full scale, one list for each channel.
// Where windows overlap, their frames stand once.
struct SpectrogramFrames {
    SpectrogramLook look;
    std::uint32_t samplesPerSecond = 0;
    unsigned columns = 0;
    unsigned windowsPerColumn = 1;
    std::vector<std::vector<float>> channels;
    std::vector<std::size_t> starts;  // of each window in a channel's list
};
// Silence stands before and behind the sound. Throws std::bad_alloc.
SpectrogramFrames ReadSpectrogramFrames(const Sound& sound, const SpectrogramColumns& columns,
                                        const SpectrogramLook& look);

// Rows from the top, a byte for each column: 0 for the darkest, 255 for a sine of full scale.
struct SpectrogramPicture {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<std::uint8_t> levels;

    std::uint8_t At(unsigned column, unsigned row) const {
        return levels[std::size_t{row} * width + column];
    }
};
// Throws std::bad_alloc.
SpectrogramPicture ComputeSpectrogram(const SpectrogramFrames& frames, unsigned height);

// The whole range in one picture, on all cores; fails when memory is short.
Result<SpectrogramPicture> SpectrogramOf(const Sound& sound, FrameRange range, unsigned width,
                                         unsigned height, const SpectrogramLook& look);

}  // namespace sonavel
