#include "sound/sound_loudness.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <new>
#include <span>
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

class GreatestValue {
  public:
    void Take(double value) {
        double known = value_.load();
        while (value > known && !value_.compare_exchange_weak(known, value)) continue;
    }
    double Get() const { return value_.load(); }

  private:
    std::atomic<double> value_ = 0;
};

// Pieces of a range. Their peaks are found on any thread, each by itself; the loudness takes them
// one after the other.
class LoudnessMeasurement {
  public:
    LoudnessMeasurement(const Sound& sound, FrameRange range)
        : sound_(sound),
          range_(range),
          loudness_(LoudnessMeter::Finds::kLoudness, sound.GetChannels(),
                    sound.GetSamplesPerSecond()) {}

    std::size_t Pieces() const {
        return (std::size_t{range_.Frames()} + kPieceFrames - 1) / kPieceFrames;
    }
    void AddLoudness(std::size_t piece) {
        ReadPiece(piece, 0, shares_);
        if (!loudness_.Add(shares_)) failed_ = true;
    }
    // Those whose samples are too small to pass what was found already are left out.
    void FindPeaks(std::size_t piece) {
        const std::uint32_t before = piece > 0 ? kReach : 0;
        std::vector<float> shares;
        ReadPiece(piece, before, shares);
        const double samples = PeakOf(shares);
        samplePeak_.Take(samples);
        if (samples * kMostBetween <= truePeak_.Get()) return;
        LoudnessMeter meter(LoudnessMeter::Finds::kTruePeak, sound_.GetChannels(),
                            sound_.GetSamplesPerSecond());
        const auto lead = std::span(shares).first(std::size_t{before} * sound_.GetChannels());
        if (!meter.Add(lead) || !meter.Add(std::span(shares).subspan(lead.size()))) failed_ = true;
        truePeak_.Take(meter.TruePeakOfLast());
    }
    bool HasFailed() const { return failed_; }
    SoundLoudness Found() const {
        return {loudness_.Integrated(), loudness_.Range(),
                std::max(truePeak_.Get(), samplePeak_.Get()), samplePeak_.Get()};
    }

  private:
    // With so many frames before it.
    void ReadPiece(std::size_t piece, std::uint32_t before, std::vector<float>& shares) const {
        const auto first = static_cast<std::uint32_t>(piece * kPieceFrames);
        const std::uint32_t frames = std::min(range_.Frames() - first, kPieceFrames) + before;
        shares.resize(std::size_t{frames} * sound_.GetChannels());
        ReadShares(sound_, range_.start + first - before, shares);
    }

    const Sound& sound_;
    FrameRange range_;
    LoudnessMeter loudness_;
    std::vector<float> shares_;
    GreatestValue truePeak_, samplePeak_;
    std::atomic<bool> failed_ = false;
};

}  // namespace

Result<SoundLoudness> MeasureLoudness(const Sound& sound, FrameRange range,
                                      ProgressWindow& progress, int lastPercent) try {
    LoudnessMeasurement measurement(sound, range.ClampedTo(sound.GetFrameCount()));
    const std::size_t pieces = measurement.Pieces();
    const auto goOn = [&](std::size_t piece) {
        progress.SetPosition(
            static_cast<int>(piece * static_cast<std::size_t>(lastPercent) / pieces));
        if (progress.Poll()) return Onward::kStop;
        measurement.AddLoudness(piece);
        return Onward::kGoOn;
    };
    const WorkDone done =
        ComputeUnits({.count = pieces,
                      .compute = [&](std::size_t piece) { measurement.FindPeaks(piece); },
                      .before = goOn},
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
