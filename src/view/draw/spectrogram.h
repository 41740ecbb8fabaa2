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
    unsigned mostWindows = 4;  // of a column
};

// The frames that columns are computed from, copied so that the sound may change meanwhile: a sound
// of its own, with silence where the windows reach beyond the first one. Where windows overlap,
// their frames stand once.
struct SpectrogramFrames {
    SpectrogramLook look;
    unsigned columns = 0;
    unsigned windowsPerColumn = 1;
    Sound sound;
    std::vector<std::uint32_t> starts;  // of each window in it

    std::uint64_t Bytes() const { return sound.GetDataSize(); }
};
// Throws std::bad_alloc.
SpectrogramFrames ReadSpectrogramFrames(const Sound& sound, const SpectrogramColumns& columns,
                                        const SpectrogramLook& look);
// The frames that these columns hang on: nothing before the first and behind the second.
struct SpectrogramReach {
    std::int64_t start = 0;  // may lie before the sound
    std::int64_t end = 0;    // or behind it
};
SpectrogramReach ReachOf(const SpectrogramColumns& columns, const SpectrogramLook& look);

// The bins whose power a row shows: the greatest of several, or a place between two.
struct SpectrogramRow {
    unsigned first = 0;
    unsigned last = 0;
    float share = 0;  // of the way from `first` to the next, where first == last
};

// Rows from the top, a byte for each column: 0 for the darkest, 255 for a sine of full scale.
struct SpectrogramPicture {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<std::uint8_t> levels;

    std::uint8_t At(unsigned column, unsigned row) const {
        return levels[std::size_t{row} * width + column];
    }
};

// Computes pictures of one look and height. Belongs to one thread: it holds the room that it
// computes in. All throw std::bad_alloc.
class SpectrogramMaker {
  public:
    SpectrogramMaker(const SpectrogramLook& look, std::uint32_t samplesPerSecond, unsigned height);

    bool Suits(const SpectrogramFrames& frames, unsigned height) const {
        return frames.look == look_ && frames.sound.GetSamplesPerSecond() == rate_ &&
               rows_.size() == height;
    }
    // The mean power of all channels.
    SpectrogramPicture Mean(const SpectrogramFrames& frames);
    // That of each.
    std::vector<SpectrogramPicture> Lanes(const SpectrogramFrames& frames);

  private:
    using Powers = std::vector<std::vector<float>>;  // by lane and bin

    SpectrogramRow RowAt(unsigned row, unsigned height) const;
    void ReadWindow(const Sound& sound, std::uint32_t start);
    void ComputeWindow(const SpectrogramFrames& frames, std::uint32_t start, Powers& powers);
    void ComputeColumn(const SpectrogramFrames& frames, unsigned column, Powers& powers);
    std::vector<SpectrogramPicture> Make(const SpectrogramFrames& frames, unsigned lanes);

    SpectrogramLook look_;
    std::uint32_t rate_;
    PowerSpectrum spectrum_;
    std::vector<SpectrogramRow> rows_;
    std::vector<std::vector<float>> values_;  // of a window, by channel, in units of the samples
    std::vector<float> one_;                  // by bin
    Powers window_;
    std::vector<float> shown_;  // power by row, and what is drawn of it
    std::vector<std::int32_t> levels_;
};

// The whole range in one picture, on all cores; fails when memory is short.
Result<SpectrogramPicture> SpectrogramOf(const Sound& sound, FrameRange range, unsigned width,
                                         unsigned height, const SpectrogramLook& look);

}  // namespace sonavel
