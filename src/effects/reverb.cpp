#include "effects/reverb.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sonavel {
namespace {

constexpr std::size_t kLateFrames = 1024;
// Divides every reverberant contribution; brings the wet path to about the loudness of the dry one.
constexpr float kReverberantShare = 1.0f / 4;
constexpr int kAllPassesAboveMs = 1700;
// The polarity of what one block's early part spills into the next. It was once meant to be drawn
// at random, but has always come out as -1.
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

// Adds as much of `values`, scaled, as the block holds from `at` on; the rest goes to the spill.
void AddShifted(std::span<const float> values, float gain, std::size_t at, std::span<float> block,
                std::vector<float>& spill) {
    const std::size_t inside = at < block.size() ? std::min(values.size(), block.size() - at) : 0;
    float* to = block.data() + (inside ? at : 0);
    for (std::size_t i = 0; i < inside; ++i) to[i] += values[i] * gain;
    const std::size_t spillAt = at + inside - block.size();
    for (std::size_t i = inside; i < values.size(); ++i)
        spill[spillAt + i - inside] += values[i] * gain;
}

// Moves the spill's first values into the block; what a short block has no room for moves up.
void TakeSpill(std::vector<float>& spill, float factor, std::span<float> block) {
    const std::size_t taken = std::min(spill.size(), block.size());
    for (std::size_t i = 0; i < taken; ++i) block[i] += spill[i] * factor;
    std::copy(spill.begin() + static_cast<std::ptrdiff_t>(taken), spill.end(), spill.begin());
    std::fill(spill.end() - static_cast<std::ptrdiff_t>(taken), spill.end(), 0.0f);
}

class ReverbProcessor : public EffectProcessor {
  public:
    ReverbProcessor(const ReverbParameters& parameters, const EffectRun& run)
        : channels_(run.channels, ReverbChannel(parameters, run.samplesPerSecond, run.frames)) {}

    std::uint32_t PieceFrames() const override { return ReverbChannel::kBlockFrames; }
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
      earlySpill_(taps_.longest),
      lateSpill_(taps_.lateStart) {
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

void ReverbChannel::Process(std::span<float> block) {
    std::vector<float> reverb(block.size());
    AddEarly(block, reverb);
    AddLate(block, reverb);
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = (dryShare_ * block[i] + wetShare_ * reverb[i]) * 0.01f;
}

void ReverbChannel::AddEarly(std::span<const float> dry, std::span<float> reverb) {
    TakeSpill(earlySpill_, kSpillPolarity, reverb);
    for (const ReverbTap& tap : taps_.taps)
        if (tap.gain != 0)
            AddShifted(dry, tap.gain * kReverberantShare, tap.delay, reverb, earlySpill_);
}

void ReverbChannel::AddLate(std::span<const float> dry, std::span<float> reverb) {
    TakeSpill(lateSpill_, 1, reverb);
    std::array<float, kLateFrames> sum;
    for (std::size_t done = 0; done < dry.size(); done += kLateFrames) {
        const std::size_t frames = std::min(kLateFrames, dry.size() - done);
        const std::span<float> piece = std::span(sum).first(frames);
        std::fill(piece.begin(), piece.end(), 0.0f);
        for (DampedComb& comb : combs_) comb.Process(dry.subspan(done, frames), piece);
        for (AllPass& stage : allPasses_) stage.Process(piece);
        AddShifted(piece, kReverberantShare, taps_.lateStart + done, reverb, lateSpill_);
    }
}

std::unique_ptr<EffectProcessor> MakeReverb(std::span<const double> values, const EffectRun& run) {
    const auto whole = [&](std::size_t index) {
        return static_cast<int>(std::lround(values[index]));
    };
    return std::make_unique<ReverbProcessor>(
        ReverbParameters{whole(0), whole(1), whole(2), whole(3), whole(4)}, run);
}

}  // namespace sonavel
