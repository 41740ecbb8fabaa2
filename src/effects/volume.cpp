#include "effects/volume.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/vector_clones.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

// Only whole numbers are stored, so what is cut off does not count.
bool IsBeyond(float value, const SampleLimits& limits) {
    const double whole = std::trunc(value);
    return whole < limits.least || whole > limits.greatest;
}

SONAVEL_VECTOR_CLONES
void Scale(std::span<float> samples, float factor) {
    for (float& sample : samples) sample = factor * sample;
}

class VolumeProcessor : public EffectProcessor {
  public:
    VolumeProcessor(const VolumeParameters& parameters, unsigned bits)
        : parameters_(parameters), bits_(bits) {}

    void Process(const EffectPiece& piece) override {
        for (const std::span<float> samples : piece.channels)
            ScaleVolume(samples, parameters_, bits_);
    }

  private:
    VolumeParameters parameters_;
    unsigned bits_;
};

}  // namespace

void ScaleVolume(std::span<float> samples, const VolumeParameters& parameters, unsigned bits) {
    const float factor = static_cast<float>(parameters.percent) * 0.01f;
    Scale(samples, factor);
    if (parameters.overload == Overload::kHold) HoldWithinLimits(samples, bits);
}

std::unique_ptr<EffectProcessor> MakeVolume(std::span<const double> values, const EffectRun& run) {
    const VolumeParameters parameters{static_cast<int>(std::lround(values[0])),
                                      values[1] != 0 ? Overload::kHold : Overload::kWrap};
    return std::make_unique<VolumeProcessor>(parameters, run.bits);
}

int VolumePercent(double decibels) {
    const double percent = 100 * std::pow(10.0, decibels / 20);
    return static_cast<int>(std::lround(std::min<double>(percent, kGreatestVolumePercent)));
}

std::optional<int> FirstTooLoudPercent(const SampleExtremes& extremes, unsigned bits) {
    const SampleLimits limits = LevelLimitsOf(bits);
    for (int percent = 0; percent <= kGreatestVolumePercent; ++percent) {
        std::array ends{static_cast<float>(extremes.minimum), static_cast<float>(extremes.maximum)};
        ScaleVolume(ends, {percent, Overload::kWrap}, bits);
        if (IsBeyond(ends[0], limits) || IsBeyond(ends[1], limits)) return percent;
    }
    return std::nullopt;
}

}  // namespace sonavel
