#include "properties/sound_statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>

#include "sound/sample_scan.h"

namespace sonavel {
namespace {

// Values of one run: small enough for the first-level cache, since each run is passed over twice,
// and for sums of samples in 32 bits.
constexpr std::size_t kRunValues = 8192;
constexpr std::size_t kRunsPerPoll = 64;
// Values of even lanes belong to the left channel, those of odd lanes to the right one.
constexpr std::size_t kLanes = 8;

// What is added up, in levels: whole numbers exactly.
template <class Type>
struct SumTypes {
    using Level = std::int32_t;
    using RunSum = std::int32_t;
    using Sum = std::int64_t;  // of squares 2^30 of 2^30 at the most
    static Level LevelOf(typename Type::Stored stored) { return Type::LevelOf(stored); }
};
template <>
struct SumTypes<FloatSample> {
    using Level = double;
    using RunSum = double;
    using Sum = double;
    static Level LevelOf(float stored) {
        return double{stored} * static_cast<double>(FloatSample::kFullScale) / 2;
    }
};

template <class Type>
struct RunSums {
    std::array<typename SumTypes<Type>::Sum, 2> sum{};
    std::array<typename SumTypes<Type>::Sum, 2> squares{};
};

template <class Type>
RunSums<Type> SumRun(std::span<const typename Type::Stored> values) {
    using Types = SumTypes<Type>;
    typename Types::RunSum sums[kLanes] = {};
    typename Types::Sum squares[kLanes] = {};
    const std::size_t whole = values.size() / kLanes * kLanes;
    for (std::size_t i = 0; i < whole; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const auto value = Types::LevelOf(values[i + lane]);
            sums[lane] += value;
            squares[lane] += value * value;
        }
    }
    for (std::size_t i = whole; i < values.size(); ++i) {
        const auto value = Types::LevelOf(values[i]);
        sums[i % kLanes] += value;
        squares[i % kLanes] += value * value;
    }
    RunSums<Type> result;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        result.sum[lane % 2] += sums[lane];
        result.squares[lane % 2] += squares[lane];
    }
    return result;
}

template <class Type>
class Measurement {
  public:
    using Stored = typename Type::Stored;

    explicit Measurement(unsigned channels) : channels_(channels) {
        result_.channels = channels;
        result_.reference = static_cast<std::int32_t>(Type::kFullScale / 2);
    }

    // A run of whole frames.
    void Add(std::span<const Stored> values) {
        const auto extremes = ScanStored(values, channels_);
        const RunSums<Type> sums = SumRun<Type>(values);
        for (std::size_t lane = 0; lane < 2; ++lane) {
            sums_[lane % channels_] += sums.sum[lane];
            squares_[lane % channels_] += sums.squares[lane];
        }
        for (unsigned channel = 0; channel < channels_; ++channel) {
            FindPeak(values, channel, extremes);
            CountClipped(values, channel, extremes);
        }
        result_.frames += static_cast<std::int64_t>(values.size() / channels_);
    }

    SoundStatistics Result() {
        const double frames = static_cast<double>(std::max<std::int64_t>(result_.frames, 1));
        for (unsigned channel = 0; channel < channels_; ++channel) {
            result_.channel[channel].rms =
                std::sqrt(static_cast<double>(squares_[channel]) / frames);
            result_.channel[channel].offset = static_cast<double>(sums_[channel]) / frames;
        }
        return result_;
    }

  private:
    static bool IsFullScale(Stored stored) {
        const auto value = Type::ValueOf(stored);
        return value <= Type::kLeast || value >= Type::kGreatest;
    }

    void FindPeak(std::span<const Stored> values, unsigned channel,
                  const StoredExtremes<Stored>& extremes) {
        ChannelStatistics& found = result_.channel[channel];
        const std::int32_t magnitude = std::max(std::abs(Type::LevelOf(extremes.maximum[channel])),
                                                std::abs(Type::LevelOf(extremes.minimum[channel])));
        if (magnitude <= std::abs(found.peak)) return;
        std::size_t i = channel;
        while (std::abs(Type::LevelOf(values[i])) != magnitude) i += channels_;
        found.peak = Type::LevelOf(values[i]);
        found.peakFrame = result_.frames + static_cast<std::int64_t>(i / channels_);
    }

    void CountClipped(std::span<const Stored> values, unsigned channel,
                      const StoredExtremes<Stored>& extremes) {
        if (!IsFullScale(extremes.maximum[channel]) && !IsFullScale(extremes.minimum[channel]))
            return;
        std::int64_t clipped = 0;
        for (std::size_t i = channel; i < values.size(); i += channels_)
            clipped += IsFullScale(values[i]);
        result_.channel[channel].clippedSamples += clipped;
    }

    unsigned channels_;
    SoundStatistics result_;
    std::array<typename SumTypes<Type>::Sum, 2> sums_{};
    std::array<typename SumTypes<Type>::Sum, 2> squares_{};
};

bool Continues(ProgressWindow& window, std::uint64_t doneBytes, std::uint64_t totalBytes) {
    if (totalBytes > 0) window.SetPosition(static_cast<int>(doneBytes * 100 / totalBytes));
    return !window.Poll();
}

template <class Type>
std::optional<SoundStatistics> Measure(const Sound& wave, ProgressWindow& window) {
    const PcmFormat format = wave.GetFormat();
    Measurement<Type> measurement(format.channels);
    std::size_t done = 0;
    for (std::size_t run = 0;; ++run) {
        if (run % kRunsPerPoll == 0 &&
            !Continues(window, done * sizeof(typename Type::Stored), wave.GetDataSize()))
            return std::nullopt;
        // Taken anew for every run, and the format with it.
        const auto all = SamplesOf<Type>(wave.Bytes());
        const std::size_t total = all.size() / format.channels * format.channels;
        if (done >= total || wave.GetFormat() != format) break;
        const std::size_t count = std::min(kRunValues, total - done);
        measurement.Add(all.subspan(done, count));
        done += count;
    }
    return measurement.Result();
}

}  // namespace

std::optional<SoundStatistics> MeasureSound(const Sound& wave, ProgressFactory& progress) {
    if (!IsEditable(wave.GetFormat())) return SoundStatistics{};
    const auto window = progress.CreateProgress(" Statistics");
    return VisitSampleType(wave.GetBits(),
                           [&](auto type) { return Measure<decltype(type)>(wave, *window); });
}

}  // namespace sonavel
