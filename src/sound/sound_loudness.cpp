#include "sound/sound_loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <new>
#include <vector>

#include "libraries/loudness_meter.h"
#include "platform/parallel.h"
#include "sound/pair_buffer.h"
#include "sound/share_io.h"

namespace sonavel {
namespace {

constexpr std::uint32_t kPieceFrames = 16384;
// What the interpolation between samples hears of those before a place, and more.
constexpr std::uint32_t kReach = 64;
// No more than this times the samples around it lies between two samples.
constexpr double kMostBetween = 3;

// True peaks of pieces that follow each other. Those whose samples are too small to pass what was
// found already are left out, so that most of a sound costs next to nothing.
class TruePeakSearch {
  public:
    TruePeakSearch(unsigned channels, std::uint32_t samplesPerSecond)
        : channels_(channels), samplesPerSecond_(samplesPerSecond) {}

    // `frames` begins with `before` frames that the last piece ended with.
    bool Add(std::span<const float> frames, std::uint32_t before) {
        const double samples = PeakOf(frames);
        samplePeak_ = std::max(samplePeak_, samples);
        if (samples * kMostBetween <= TruePeak()) {
            Close();
            return true;
        }
        if (meter_) return meter_->Add(frames.subspan(std::size_t{before} * channels_));
        meter_ = std::make_unique<LoudnessMeter>(LoudnessMeter::Finds::kTruePeak, channels_,
                                                 samplesPerSecond_);
        return meter_->Add(frames);
    }
    double TruePeak() const {
        return std::max({samplePeak_, found_, meter_ ? meter_->TruePeak() : 0});
    }
    double SamplePeak() const { return samplePeak_; }

  private:
    void Close() {
        found_ = TruePeak();
        meter_.reset();
    }

    unsigned channels_;
    std::uint32_t samplesPerSecond_;
    std::unique_ptr<LoudnessMeter> meter_;
    double found_ = 0;
    double samplePeak_ = 0;
};

// The loudness and the peaks are measured beside each other, piece by piece.
class LoudnessMeasurement {
  public:
    LoudnessMeasurement(const Sound& sound, FrameRange range)
        : sound_(sound),
          range_(range),
          loudness_(LoudnessMeter::Finds::kLoudness, sound.GetChannels(),
                    sound.GetSamplesPerSecond()),
          peaks_(sound.GetChannels(), sound.GetSamplesPerSecond()) {}

    std::size_t Pieces() const {
        return (std::size_t{range_.Frames()} + kPieceFrames - 1) / kPieceFrames;
    }
    void Measure(std::size_t unit) {
        const bool peaks = unit % 2 == 1;
        const auto first = static_cast<std::uint32_t>(unit / 2 * kPieceFrames);
        const std::uint32_t before = peaks ? std::min(first, kReach) : 0;
        const std::uint32_t frames = std::min(range_.Frames() - first, kPieceFrames) + before;
        std::vector<float> shares(std::size_t{frames} * sound_.GetChannels());
        ReadShares(sound_, range_.start + first - before, shares);
        const bool taken = peaks ? peaks_.Add(shares, before) : loudness_.Add(shares);
        if (!taken) failed_[peaks] = true;
    }
    bool HasFailed() const { return failed_[0] || failed_[1]; }
    SoundLoudness Found() const {
        return {loudness_.Integrated(), loudness_.Range(), peaks_.TruePeak(), peaks_.SamplePeak()};
    }

  private:
    const Sound& sound_;
    FrameRange range_;
    LoudnessMeter loudness_;
    TruePeakSearch peaks_;
    std::array<bool, 2> failed_{};  // each set by its lane alone
};

}  // namespace

Result<SoundLoudness> MeasureLoudness(const Sound& sound, FrameRange range,
                                      ProgressWindow& progress, int lastPercent) try {
    LoudnessMeasurement measurement(sound, range.ClampedTo(sound.GetFrameCount()));
    const std::size_t units = 2 * measurement.Pieces();
    const auto show = [&](std::size_t unit) {
        progress.SetPosition(
            static_cast<int>(unit * static_cast<std::size_t>(lastPercent) / units));
        return progress.Poll() ? Onward::kStop : Onward::kGoOn;
    };
    const WorkDone done =
        ComputeUnits({.count = units,
                      .lanes = 2,
                      .compute = [&](std::size_t unit) { measurement.Measure(unit); },
                      .before = show},
                     ThreadsToUse());
    if (done.end == WorkEnd::kStopped) return Cancelled();
    if (done.end == WorkEnd::kOutOfMemory) return Failed(failure::kMemory);
    if (measurement.HasFailed()) return Failed("The loudness cannot be measured at this rate.");
    return measurement.Found();
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

double DecibelsOfShare(double share) {
    return share > 0 ? 20 * std::log10(share) : -std::numeric_limits<double>::infinity();
}

double ShareOfDecibels(double decibels) {
    return std::pow(10.0, decibels / 20);
}

}  // namespace sonavel
