#include "effects/reverb.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Divides every reverberant contribution; brings the wet path to about the loudness of the dry one.
constexpr float kReverberantShare = 1.0f / 4;
constexpr int kAllPassesAboveMs = 1700;
// The polarity of what one block's early part spills into the next. Another
// value would change how every setting sounds.
constexpr float kSpillPolarity = -1;

struct CombSettings {
    double delaySeconds;
    double decay;
};
// The decays do not follow the delays, and the third is ten times its neighbours; rooms sound so.
constexpr CombSettings kCombs[] = {{0.05, 0.07},   {0.065, 0.065}, {0.075, 0.6},
                                   {0.085, 0.055}, {0.095, 0.05},  {0.12, 0.045}};

struct AllPassSettings {
    double delaySeconds;
    float gain;
};
constexpr AllPassSettings kAllPasses[] = {
    {0.006, 0.7f}, {0.0091, 0.683f}, {0.0099, 0.678f}, {0.0107, 0.671f}};

constexpr DampedComb::Taps kDamping[] = {
    {0.0014f, -0.0319f, 0.0481f, 0.4824f, 0.4824f, 0.0481f, -0.0319f, 0.0014f},
    {0.006f, 0.0429f, 0.1627f, 0.2884f, 0.2884f, 0.1627f, 0.0429f, 0.006f},
    {0.0083f, 0.0472f, 0.1638f, 0.2806f, 0.2806f, 0.1638f, 0.0472f, 0.0083f},
};

std::uint32_t Frames(double seconds, std::uint32_t samplesPerSecond) {
    return static_cast<std::uint32_t>(samplesPerSecond * seconds);
}

ReverbTaps ShortenedTo(std::uint32_t frames, ReverbTaps taps) {
    for (ReverbTap& tap : taps.taps) tap.delay = std::min(tap.delay, frames);
    taps.longest = std::min(taps.longest, frames);
    taps.lateStart = std::min(taps.lateStart, frames);
    return taps;
}

SONAVEL_VECTOR_CLONES
void Add(const float* __restrict values, float gain, std::span<float> sum) {
    float* __restrict to = sum.data();
    for (std::size_t i = 0; i < sum.size(); ++i) to[i] += values[i] * gain;
}

SONAVEL_VECTOR_CLONES
void Mix(const float* __restrict dry, float dryShare, std::span<const float> reverb, float wetShare,
         float* __restrict mixture) {
    for (std::size_t i = 0; i < reverb.size(); ++i)
        mixture[i] = (dryShare * dry[i] + wetShare * reverb[i]) * 0.01f;
}

class ReverbProcessor : public EffectProcessor {
  public:
    ReverbProcessor(const ReverbParameters& parameters, const EffectRun& run)
        : channels_(run.channels, ReverbChannel(parameters, run.samplesPerSecond, run.frames)) {}

    std::uint32_t PieceFrames() const override { return ReverbChannel::kPieceFrames; }
    std::uint32_t FramesPerStep() const override { return ReverbChannel::kBlockFrames; }
    void Process(const EffectPiece& piece) override {
        for (std::size_t channel = 0; channel < channels_.size(); ++channel)
            if (!piece.channels[channel].empty())
                channels_[channel].Process(piece.channels[channel]);
    }

  private:
    std::vector<ReverbChannel> channels_;
};

}  // namespace

int DampingClass(int timeMs) {
    return timeMs < 2000 ? 0 : timeMs < 4000 ? 1 : 2;
}

ReverbChannel::ReverbChannel(const ReverbParameters& parameters, std::uint32_t samplesPerSecond,
                             std::uint32_t runFrames)
    : taps_(ShortenedTo(runFrames, MakeReverbTaps(parameters, samplesPerSecond))),
      dryShare_(static_cast<float>(parameters.dryPercent)),
      wetShare_(static_cast<float>(parameters.wetPercent)),
      dry_(taps_.longest),
      late_(taps_.lateStart) {
    const DampedComb::Taps& damping = kDamping[DampingClass(parameters.timeMs)];
    const float timeSeconds = static_cast<float>(parameters.timeMs * 0.001);
    for (const CombSettings& comb : kCombs) {
        const double gain = std::pow(0.001, comb.decay / timeSeconds);
        combs_.emplace_back(std::min(Frames(comb.delaySeconds, samplesPerSecond), runFrames),
                            damping, static_cast<float>(gain));
    }
    if (parameters.timeMs > kAllPassesAboveMs)
        for (const AllPassSettings& stage : kAllPasses)
            allPasses_.emplace_back(
                std::min(Frames(stage.delaySeconds, samplesPerSecond), runFrames), stage.gain);
}

void ReverbChannel::Process(std::span<float> samples) {
    while (!samples.empty()) {
        const std::size_t frames = std::min<std::size_t>(
            samples.size(), std::min(kPieceFrames, kBlockFrames - placeInBlock_));
        ProcessPiece(samples.first(frames));
        samples = samples.subspan(frames);
    }
}

void ReverbChannel::ProcessPiece(std::span<float> piece) {
    float* dry = dry_.Extend(piece.size());
    std::copy(piece.begin(), piece.end(), dry);
    Piece sums;
    const std::span<float> reverb = std::span(sums).first(piece.size());
    AddEarly(dry, reverb);
    AddLate(dry, reverb);
    Mix(dry, dryShare_, reverb, wetShare_, piece.data());
    dry_.Keep(piece.size());
    placeInBlock_ = (placeInBlock_ + static_cast<std::uint32_t>(piece.size())) % kBlockFrames;
}

void ReverbChannel::AddEarly(const float* dry, std::span<float> reverb) const {
    std::fill(reverb.begin(), reverb.end(), 0.0f);
    for (std::uint32_t ago = taps_.longest / kBlockFrames + 1; ago > 0; --ago)
        AddTaps(dry, ago, reverb);
    for (float& value : reverb) value *= kSpillPolarity;
    AddTaps(dry, 0, reverb);
}

// What was heard so many blocks before the present one.
void ReverbChannel::AddTaps(const float* dry, std::uint32_t blocksAgo,
                            std::span<float> reverb) const {
    const auto frames = static_cast<std::int64_t>(reverb.size());
    const std::int64_t blockStart =
        -std::int64_t{placeInBlock_} - std::int64_t{blocksAgo} * kBlockFrames;
    for (const ReverbTap& tap : taps_.taps) {
        const std::int64_t first = std::clamp<std::int64_t>(blockStart + tap.delay, 0, frames);
        const std::int64_t end =
            std::clamp<std::int64_t>(blockStart + tap.delay + kBlockFrames, 0, frames);
        const float gain = tap.gain * kReverberantShare;
        if (gain == 0) continue;
        if (first < end) Add(dry + first - tap.delay, gain, reverb.subspan(first, end - first));
    }
}

void ReverbChannel::AddLate(const float* dry, std::span<float> reverb) {
    float* late = late_.Extend(reverb.size());
    const std::span<float> sum(late, reverb.size());
    std::fill(sum.begin(), sum.end(), 0.0f);
    for (DampedComb& comb : combs_) comb.Process({dry, reverb.size()}, sum);
    for (AllPass& stage : allPasses_) stage.Process(sum);
    Add(late - taps_.lateStart, kReverberantShare, reverb);
    late_.Keep(reverb.size());
}

std::unique_ptr<EffectProcessor> MakeReverb(std::span<const double> values, const EffectRun& run) {
    const auto whole = [&](std::size_t index) {
        return static_cast<int>(std::lround(values[index]));
    };
    return std::make_unique<ReverbProcessor>(
        ReverbParameters{whole(0), whole(1), whole(2), whole(3), whole(4)}, run);
}

}  // namespace sonavel
