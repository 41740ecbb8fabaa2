#include "view/draw/spectrogram.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "platform/parallel.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

// --- Frequencies

constexpr double kMelCorner = 700;

double MelOf(double frequency) {
    return std::log1p(frequency / kMelCorner);
}

// --- Reading

// A column of more frames than that is seen through several windows, up to so many frames in all.
constexpr unsigned kMostWindows = 4;
constexpr unsigned kMostFramesOfColumn = 16384;

unsigned WindowsPerColumn(const SpectrogramColumns& columns, unsigned window) {
    const double wanted = std::ceil(columns.framesPerColumn / window);
    const unsigned most = std::clamp(kMostFramesOfColumn / window, 1U, kMostWindows);
    return static_cast<unsigned>(std::clamp(wanted, 1.0, double{1} * most));
}

// Frames from `start` on as shares of full scale, silence where the sound has none.
void ReadShares(const Sound& sound, unsigned channel, std::int64_t start, std::span<float> out) {
    std::ranges::fill(out, 0.0F);
    const auto count = static_cast<std::int64_t>(out.size());
    const std::int64_t from = std::clamp<std::int64_t>(start, 0, sound.GetFrameCount());
    const std::int64_t to = std::clamp<std::int64_t>(start + count, from, sound.GetFrameCount());
    const auto read = out.subspan(static_cast<std::size_t>(std::min(from - start, count)),
                                  static_cast<std::size_t>(to - from));
    ReadChannel(sound, channel, static_cast<std::uint32_t>(from), read, EightBitReading::kFull);
    const auto scale =
        static_cast<float>(1.0 / (static_cast<double>(LimitsOfSamples(sound.GetBits()).greatest)));
    for (float& share : read) share *= scale;
}

std::vector<std::int64_t> WindowStarts(const SpectrogramColumns& columns, unsigned windows,
                                       unsigned window) {
    std::vector<std::int64_t> starts;
    starts.reserve(std::size_t{columns.columns} * windows);
    const double step = columns.framesPerColumn / windows;
    for (std::size_t i = 0; i < std::size_t{columns.columns} * windows; ++i)
        starts.push_back(std::llround(columns.firstFrame + static_cast<double>(i) * step) -
                         window / 2);
    return starts;
}

// --- Computing

// The bins whose power a row shows: the greatest of several, or a place between two.
struct RowBins {
    unsigned first = 0;
    unsigned last = 0;
    float share = 0;  // of the way from `first` to the next, where first == last
};

std::vector<RowBins> BinsOfRows(const SpectrogramFrames& frames, unsigned height) {
    const double highest = std::max(frames.samplesPerSecond, 1U) / 2.0;
    const unsigned lastBin = frames.look.windowFrames / 2;
    std::vector<RowBins> rows(height);
    const auto binAt = [&](double row) {  // counted from the bottom
        const double at = height > 1 ? std::clamp(row / (height - 1), 0.0, 1.0) : 0;
        return FrequencyAt(frames.look.scale, at, highest) / highest * lastBin;
    };
    for (unsigned row = 0; row < height; ++row) {
        const double low = binAt(row - 0.5), middle = binAt(row), high = binAt(row + 0.5);
        RowBins& bins = rows[height - 1 - row];
        bins.first = static_cast<unsigned>(std::ceil(low));
        bins.last = std::min(static_cast<unsigned>(std::floor(high)), lastBin);
        if (bins.first < bins.last) continue;
        bins.first = bins.last = std::min(static_cast<unsigned>(middle), lastBin - 1);
        bins.share = static_cast<float>(std::min(middle - bins.first, 1.0));
    }
    return rows;
}

float PowerOf(const RowBins& bins, const std::vector<float>& power) {
    if (bins.first == bins.last)
        return std::lerp(power[bins.first], power[bins.first + 1], bins.share);
    return *std::max_element(power.begin() + bins.first, power.begin() + bins.last + 1);
}

std::uint8_t LevelOf(float power, double rangeDecibels) {
    constexpr float kLeastPower = 1e-20F;
    const double decibels = 10 * std::log10(std::max(power, kLeastPower));
    const double height = std::clamp(decibels / rangeDecibels + 1, 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(height * 255));
}

// The mean power of the channels, the greatest of a column's windows.
void ColumnPower(const SpectrogramFrames& frames, unsigned column, PowerSpectrum& spectrum,
                 std::vector<float>& one, std::vector<float>& power) {
    std::ranges::fill(power, 0.0F);
    std::vector<float> mean(power.size());
    for (unsigned window = 0; window < frames.windowsPerColumn; ++window) {
        const std::size_t start = frames.starts[column * frames.windowsPerColumn + window];
        std::ranges::fill(mean, 0.0F);
        for (const std::vector<float>& channel : frames.channels) {
            spectrum.Compute(std::span(channel).subspan(start, frames.look.windowFrames), one);
            for (std::size_t bin = 0; bin < one.size(); ++bin) mean[bin] += one[bin];
        }
        for (std::size_t bin = 0; bin < mean.size(); ++bin)
            power[bin] = std::max(power[bin], mean[bin]);
    }
    for (float& sum : power) sum /= static_cast<float>(frames.channels.size());
}

}  // namespace

double FrequencyAt(FrequencyScale scale, double height, double highest) {
    switch (scale) {
        case FrequencyScale::kLinear:
            return height * highest;
        case FrequencyScale::kLogarithmic:
            if (height <= 0) return 0;
            return kLowestLogFrequency * std::pow(highest / kLowestLogFrequency, height);
        case FrequencyScale::kMel:
            return kMelCorner * std::expm1(height * MelOf(highest));
    }
    return 0;
}

double HeightOf(FrequencyScale scale, double frequency, double highest) {
    const double held = std::clamp(frequency, 0.0, highest);
    switch (scale) {
        case FrequencyScale::kLinear:
            return held / highest;
        case FrequencyScale::kLogarithmic:
            return std::max(std::log(std::max(held, kLowestLogFrequency) / kLowestLogFrequency) /
                                std::log(highest / kLowestLogFrequency),
                            0.0);
        case FrequencyScale::kMel:
            return MelOf(held) / MelOf(highest);
    }
    return 0;
}

SpectrogramFrames ReadSpectrogramFrames(const Sound& sound, const SpectrogramColumns& columns,
                                        const SpectrogramLook& look) {
    const unsigned window = look.windowFrames;
    SpectrogramFrames frames{.look = look,
                             .samplesPerSecond = sound.GetSamplesPerSecond(),
                             .columns = columns.columns,
                             .windowsPerColumn = WindowsPerColumn(columns, window),
                             .channels = {},
                             .starts = {}};
    const auto starts = WindowStarts(columns, frames.windowsPerColumn, window);
    if (starts.empty()) return frames;
    const auto span = static_cast<std::size_t>(starts.back() - starts.front()) + window;
    const bool overlaps = span <= starts.size() * window;
    frames.channels.resize(sound.GetChannels());
    for (std::size_t i = 0; i < starts.size(); ++i)
        frames.starts.push_back(overlaps ? static_cast<std::size_t>(starts[i] - starts.front())
                                         : i * window);
    for (unsigned channel = 0; channel < sound.GetChannels(); ++channel) {
        std::vector<float>& list = frames.channels[channel];
        list.resize(overlaps ? span : starts.size() * window);
        if (overlaps)
            ReadShares(sound, channel, starts.front(), list);
        else
            for (std::size_t i = 0; i < starts.size(); ++i)
                ReadShares(sound, channel, starts[i], std::span(list).subspan(i * window, window));
    }
    return frames;
}

SpectrogramPicture ComputeSpectrogram(const SpectrogramFrames& frames, unsigned height) {
    SpectrogramPicture picture{frames.columns, height, {}};
    picture.levels.resize(std::size_t{frames.columns} * height);
    PowerSpectrum spectrum(frames.look.windowFrames, frames.look.shape);
    const std::vector<RowBins> rows = BinsOfRows(frames, height);
    std::vector<float> one(spectrum.Bins()), power(spectrum.Bins());
    for (unsigned column = 0; column < frames.columns; ++column) {
        ColumnPower(frames, column, spectrum, one, power);
        for (unsigned row = 0; row < height; ++row)
            picture.levels[std::size_t{row} * frames.columns + column] =
                LevelOf(PowerOf(rows[row], power), frames.look.rangeDecibels);
    }
    return picture;
}

Result<SpectrogramPicture> SpectrogramOf(const Sound& sound, FrameRange range, unsigned width,
                                         unsigned height, const SpectrogramLook& look) try {
    constexpr unsigned kColumnsAtOnce = 32;
    SpectrogramPicture picture{width, height, {}};
    picture.levels.resize(std::size_t{width} * height);
    const double framesPerColumn = static_cast<double>(range.Frames()) / width;
    const WorkEnd end =
        ComputeParts((width + kColumnsAtOnce - 1) / kColumnsAtOnce, [&](std::size_t part) {
            const auto first = static_cast<unsigned>(part) * kColumnsAtOnce;
            const SpectrogramPicture columns = ComputeSpectrogram(
                ReadSpectrogramFrames(sound,
                                      {.firstFrame = range.start + first * framesPerColumn,
                                       .framesPerColumn = framesPerColumn,
                                       .columns = std::min(kColumnsAtOnce, width - first)},
                                      look),
                height);
            for (std::size_t row = 0; row < height; ++row)
                std::copy_n(columns.levels.data() + row * columns.width, columns.width,
                            picture.levels.data() + row * width + first);
        });
    if (end != WorkEnd::kFinished) return Failed(failure::kMemory);
    return picture;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

}  // namespace sonavel
