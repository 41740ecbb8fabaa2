#include "effects/modulator.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "effects/fast_trigonometry.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

class ModulatorProcessor : public EffectProcessor {
  public:
    ModulatorProcessor(const ModulatorParameters& parameters, const EffectRun& run)
        : first_(parameters.first, run.samplesPerSecond, run.frames),
          second_(parameters.second, run.samplesPerSecond, run.frames) {}

    void Process(const EffectPiece& piece) override {
        std::array<float, kPieceFrames> gains;
        const auto used = std::span(gains).first(piece.frames);
        std::fill(used.begin(), used.end(), 1.0f);
        first_.Run(piece.first, used);
        second_.Run(piece.first, used);
        for (const std::span<float> samples : piece.channels)
            for (std::size_t i = 0; i < samples.size(); ++i) samples[i] *= used[i];
    }

  private:
    CModOscillator first_;
    CModOscillator second_;
};

int Whole(double value) {
    return static_cast<int>(std::lround(value));
}

}  // namespace

CModOscillator::CModOscillator(const OscillatorParameters& parameters,
                               std::uint32_t samplesPerSecond, std::uint32_t runFrames) {
    // 44.1 frames a millisecond whatever the sound's rate: settings sound alike in old scripts.
    delayFrames_ = static_cast<std::uint32_t>(parameters.delayMs * 44.1);
    const float frequency = static_cast<float>(parameters.frequency) * 0.001f;
    amplitude_ = static_cast<float>(parameters.amplitudePercent) * 0.01f;
    const std::uint32_t fiftieth = samplesPerSecond / 50;
    active_ = parameters.frequency != 0 && parameters.amplitudePercent != 0 && fiftieth != 0;
    if (!active_) return;
    const double step = static_cast<double>(frequency) * 6.283184 / fiftieth;
    phases_ = SumsAtPieces({0, step}, runFrames, kPieceFrames);
}

SONAVEL_VECTOR_CLONES
void CModOscillator::Run(std::uint32_t firstFrame, std::span<float> gains) const {
    if (!active_) return;
    std::array<float, kPieceFrames> phases;
    RunningSum phase = phases_[firstFrame / kPieceFrames];
    phase.Take(std::span(phases).first(gains.size()));
    // The phase runs during the delay, but the gain is left alone.
    const std::size_t waiting = delayFrames_ > firstFrame ? delayFrames_ - firstFrame : 0;
    const double amplitude = -amplitude_;
    for (std::size_t i = std::min(waiting, gains.size()); i < gains.size(); ++i)
        gains[i] = static_cast<float>(FastSin(phases[i]) * amplitude * gains[i]);
}

std::unique_ptr<EffectProcessor> MakeModulator(std::span<const double> values,
                                               const EffectRun& run) {
    return std::make_unique<ModulatorProcessor>(
        ModulatorParameters{{Whole(values[0]), Whole(values[1]), Whole(values[2])},
                            {Whole(values[3]), Whole(values[4]), Whole(values[5])}},
        run);
}

}  // namespace sonavel
