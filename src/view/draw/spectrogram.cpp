#include "view/draw/spectrogram.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "platform/parallel.h"
#include "sound/sample_io.h"
#include "sound/sample_types.h"
#include "sound/vector_lanes.h"

namespace sonavel {
namespace {

// --- Frequencies

constexpr double kMelCorner = 700;

double MelOf(double frequency) {
    return std::log1p(frequency / kMelCorner);
}

// --- Reading

// A column of more frames than that is seen through several windows, up to so many frames in all.
constexpr unsigned kMostFramesOfColumn = 16384;

unsigned WindowsPerColumn(const SpectrogramColumns& columns, unsigned window) {
    const double wanted = std::ceil(columns.framesPerColumn / window);
    const unsigned most = std::clamp(kMostFramesOfColumn / window, 1U, columns.mostWindows);
    return static_cast<unsigned>(std::clamp(wanted, 1.0, double{1} * most));
}

// The middles of the windows, less half of one.
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

// Copies the frames from `start` on to those of another sound from `at` on, as far as there are
// some.
void CopyFrames(const Sound& from, std::int64_t start, Sound& to, std::size_t at,
                std::size_t count) {
    const std::int64_t frames = from.GetFrameCount();
    const std::int64_t first = std::clamp<std::int64_t>(start, 0, frames);
    const std::int64_t last =
        std::clamp<std::int64_t>(start + static_cast<std::int64_t>(count), first, frames);
    if (first == last) return;
    const std::size_t align = from.GetBlockAlign();
    const auto bytes = from.Bytes().subspan(static_cast<std::size_t>(first) * align);
    const std::size_t length =
        std::min(static_cast<std::size_t>(last - first) * align, bytes.size());
    const std::size_t target = (at + static_cast<std::size_t>(first - start)) * align;
    std::memcpy(to.MutableBytes().data() + target, bytes.data(), length);
}

// --- Computing

// Rows side by side, said outright: the compiler leaves these loops alone, as they compare.
typedef std::int32_t FourNumbers __attribute__((vector_size(16)));
constexpr std::size_t kRowsAtOnce = kLanes<Four>;

std::size_t RoomForRows(std::size_t rows) {
    return (rows + kRowsAtOnce - 1) / kRowsAtOnce * kRowsAtOnce;
}

// The binary logarithm to 0.0001, of what is a number above 1e-30, else of that. A call for each
// pixel would take as long as the transforms.
Four OctavesOf(const Four& power) {
    constexpr float kLeastPower = 1e-30F;
    const Four held = power > kLeastPower ? power : Four{} + kLeastPower;
    const auto bits = std::bit_cast<FourNumbers>(held);
    const Four m = std::bit_cast<Four>((bits & 0x7FFFFF) | 0x3F800000) - 1;
    const Four bend = 0.44241858F + m * (-0.26957801F + m * (0.15053320F + m * -0.04487396F));
    return __builtin_convertvector((bits >> 23) - 127, Four) + m + m * (1 - m) * bend;
}

// From powers to levels of a picture.
struct LevelScale {
    // `fullScale`: the power that is drawn brightest.
    LevelScale(double rangeDecibels, double fullScale)
        : levelsOfAnOctave(static_cast<float>(kMost / rangeDecibels * kDecibelsOfAnOctave)),
          octavesOfFullScale(static_cast<float>(std::log2(fullScale))) {}

    static constexpr float kMost = 255;
    static constexpr double kDecibelsOfAnOctave = 3.0102999566;
    float levelsOfAnOctave, octavesOfFullScale;
};

// Both of RoomForRows().
void PutLevels(std::span<const float> powers, const LevelScale& by, std::int32_t* levels) {
    for (std::size_t i = 0; i < powers.size(); i += kRowsAtOnce) {
        const Four octaves = OctavesOf(Load<Four>(powers.data() + i).value) - by.octavesOfFullScale;
        const Four level = LevelScale::kMost + octaves * by.levelsOfAnOctave + 0.5F;
        const Four above = level < 0.0F ? Four{} : level;
        const Four held = above > LevelScale::kMost ? Four{} + LevelScale::kMost : above;
        const auto whole = __builtin_convertvector(held, FourNumbers);
        std::memcpy(levels + i, &whole, sizeof whole);
    }
}

[[gnu::always_inline]] inline void TakeGreater(Four& greatest, const float* next) {
    const Four values = Load<Four>(next).value;
    greatest = values > greatest ? values : greatest;
}

// Several greatest ones side by side, which do not wait for each other. The last values are looked
// at together with some of those before them.
float GreatestOf(std::span<const float> powers) {
    constexpr std::size_t kCount = kLanes<Four>;
    const std::size_t count = powers.size();
    if (count < kCount) return *std::ranges::max_element(powers);
    Four even{}, odd{};
    std::size_t at = 0;
    for (; at + 2 * kCount <= count; at += 2 * kCount) {
        TakeGreater(even, powers.data() + at);
        TakeGreater(odd, powers.data() + at + kCount);
    }
    if (at + kCount <= count) TakeGreater(even, powers.data() + at);
    TakeGreater(odd, powers.data() + count - kCount);
    even = odd > even ? odd : even;
    return std::max(std::max(even[0], even[1]), std::max(even[2], even[3]));
}

void PutRows(const float* power, std::span<const SpectrogramRow> rows, float* shown) {
    for (const SpectrogramRow& row : rows)
        *shown++ = row.first == row.last
                       ? power[row.first] + row.share * (power[row.first + 1] - power[row.first])
                       : GreatestOf({power + row.first, row.last + 1 - row.first});
}

void AddPowers(std::span<const float> powers, std::span<float> to) {
    for (std::size_t bin = 0; bin < to.size(); ++bin) to[bin] += powers[bin];
}

// Of so many bins as a window has at least, which is more than a vector's.
void KeepGreater(std::span<const float> powers, std::span<float> kept) {
    const std::size_t last = kept.size() - kLanes<Four>;
    for (std::size_t next = 0; next < kept.size(); next += kLanes<Four>) {
        const std::size_t at = std::min(next, last);
        Four greatest = Load<Four>(kept.data() + at).value;
        TakeGreater(greatest, powers.data() + at);
        Store(kept.data() + at, greatest);
    }
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

SpectrogramReach ReachOf(const SpectrogramColumns& columns, const SpectrogramLook& look) {
    const auto starts =
        WindowStarts(columns, WindowsPerColumn(columns, look.windowFrames), look.windowFrames);
    if (starts.empty()) return {};
    return {starts.front(), starts.back() + look.windowFrames};
}

SpectrogramFrames ReadSpectrogramFrames(const Sound& sound, const SpectrogramColumns& columns,
                                        const SpectrogramLook& look) {
    const unsigned window = look.windowFrames;
    SpectrogramFrames frames{.look = look,
                             .columns = columns.columns,
                             .windowsPerColumn = WindowsPerColumn(columns, window),
                             .sound = {},
                             .starts = {}};
    const auto starts = WindowStarts(columns, frames.windowsPerColumn, window);
    if (starts.empty()) return frames;
    const auto span = static_cast<std::size_t>(starts.back() - starts.front()) + window;
    const bool overlaps = span <= starts.size() * window;
    const std::size_t total = overlaps ? span : starts.size() * window;
    if (!frames.sound.Create(sound.GetChannels(), sound.GetBits(), sound.GetSamplesPerSecond(),
                             static_cast<std::uint32_t>(total)))
        throw std::bad_alloc();
    if (starts.front() < 0 || starts.back() + window > sound.GetFrameCount())
        FillWithSilence(frames.sound.MutableBytes(), sound.GetBits());
    frames.starts.reserve(starts.size());
    for (std::size_t i = 0; i < starts.size(); ++i)
        frames.starts.push_back(
            static_cast<std::uint32_t>(overlaps ? starts[i] - starts.front() : i * window));
    if (overlaps)
        CopyFrames(sound, starts.front(), frames.sound, 0, span);
    else
        for (std::size_t i = 0; i < starts.size(); ++i)
            CopyFrames(sound, starts[i], frames.sound, i * window, window);
    return frames;
}

// --- The maker

SpectrogramMaker::SpectrogramMaker(const SpectrogramLook& look, std::uint32_t samplesPerSecond,
                                   unsigned height)
    : look_(look),
      rate_(samplesPerSecond),
      spectrum_(look.windowFrames, look.shape),
      one_(spectrum_.Bins()),
      shown_(RoomForRows(height)),
      levels_(shown_.size()) {
    rows_.reserve(height);
    for (unsigned row = 0; row < height; ++row) rows_.push_back(RowAt(height - 1 - row, height));
}

// Of a row counted from the bottom.
SpectrogramRow SpectrogramMaker::RowAt(unsigned row, unsigned height) const {
    const double highest = std::max(rate_, 1U) / 2.0;
    const unsigned lastBin = look_.windowFrames / 2;
    const auto binAt = [&](double place) {
        const double at = height > 1 ? std::clamp(place / (height - 1), 0.0, 1.0) : 0;
        return FrequencyAt(look_.scale, at, highest) / highest * lastBin;
    };
    const double low = binAt(row - 0.5), middle = binAt(row), high = binAt(row + 0.5);
    SpectrogramRow bins;
    bins.first = static_cast<unsigned>(std::ceil(low));
    bins.last = std::min(static_cast<unsigned>(std::floor(high)), lastBin);
    if (bins.first < bins.last) return bins;
    bins.first = bins.last = std::min(static_cast<unsigned>(middle), lastBin - 1);
    bins.share = static_cast<float>(std::min(middle - bins.first, 1.0));
    return bins;
}

// Both channels at once, as the frames lie far away in memory.
void SpectrogramMaker::ReadWindow(const Sound& sound, std::uint32_t start) {
    if (values_.size() == 2)
        return ReadBothChannels(sound, start, values_[0], values_[1], EightBitReading::kFull);
    for (unsigned channel = 0; channel < values_.size(); ++channel)
        ReadChannel(sound, channel, start, values_[channel], EightBitReading::kFull);
}

// Of each channel, or the sum of the channels' powers where there is one lane.
void SpectrogramMaker::ComputeWindow(const SpectrogramFrames& frames, std::uint32_t start,
                                     Powers& powers) {
    ReadWindow(frames.sound, start);
    for (std::size_t channel = 0; channel < values_.size(); ++channel) {
        const bool hasLane = channel < powers.size();
        spectrum_.Compute(values_[channel], hasLane ? powers[channel] : one_);
        if (!hasLane) AddPowers(one_, powers.back());
    }
}

// Of each lane the greatest of a column's windows.
void SpectrogramMaker::ComputeColumn(const SpectrogramFrames& frames, unsigned column,
                                     Powers& powers) {
    const std::size_t first = std::size_t{column} * frames.windowsPerColumn;
    ComputeWindow(frames, frames.starts[first], powers);
    for (unsigned window = 1; window < frames.windowsPerColumn; ++window) {
        ComputeWindow(frames, frames.starts[first + window], window_);
        for (std::size_t lane = 0; lane < powers.size(); ++lane)
            KeepGreater(window_[lane], powers[lane]);
    }
}

std::vector<SpectrogramPicture> SpectrogramMaker::Make(const SpectrogramFrames& frames,
                                                       unsigned lanes) {
    const std::size_t height = rows_.size();
    const unsigned channels = frames.sound.GetChannels();
    SpectrogramPicture empty{frames.columns, static_cast<unsigned>(height), {}};
    empty.levels.resize(frames.columns * height);
    std::vector<SpectrogramPicture> pictures(lanes, empty);
    values_.assign(channels, std::vector<float>(look_.windowFrames));
    Powers powers(lanes, std::vector<float>(spectrum_.Bins()));
    window_ = powers;
    const double fullScale = LimitsOfSamples(frames.sound.GetBits()).greatest;
    const LevelScale scale(look_.rangeDecibels, fullScale * fullScale * channels / lanes);
    for (unsigned column = 0; column < frames.columns; ++column) {
        ComputeColumn(frames, column, powers);
        for (unsigned lane = 0; lane < lanes; ++lane) {
            PutRows(powers[lane].data(), rows_, shown_.data());
            PutLevels(shown_, scale, levels_.data());
            for (std::size_t row = 0; row < height; ++row)
                pictures[lane].levels[row * frames.columns + column] =
                    static_cast<std::uint8_t>(levels_[row]);
        }
    }
    return pictures;
}

SpectrogramPicture SpectrogramMaker::Mean(const SpectrogramFrames& frames) {
    return std::move(Make(frames, 1).front());
}

std::vector<SpectrogramPicture> SpectrogramMaker::Lanes(const SpectrogramFrames& frames) {
    return Make(frames, frames.sound.GetChannels());
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
            const SpectrogramFrames frames =
                ReadSpectrogramFrames(sound,
                                      {.firstFrame = range.start + first * framesPerColumn,
                                       .framesPerColumn = framesPerColumn,
                                       .columns = std::min(kColumnsAtOnce, width - first)},
                                      look);
            const SpectrogramPicture columns =
                SpectrogramMaker(look, sound.GetSamplesPerSecond(), height).Mean(frames);
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
