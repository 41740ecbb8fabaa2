#include "effects/modulator.h"

#include <algorithm>
#include <array>

#include "effects/effect_buffer.h"
#include "effects/fast_trigonometry.h"
#include "platform/vector_clones.h"

namespace sonavel {

CModOscillator::CModOscillator(const OscillatorParameters& parameters,
                               std::uint32_t samplesPerSecond) {
    // 44.1 frames a millisecond whatever the sound's rate: settings sound alike in old scripts.
    delayFrames_ = static_cast<std::uint32_t>(parameters.delayMs * 44.1);
    const float frequency = static_cast<float>(parameters.frequency) * 0.001f;
    amplitude_ = static_cast<float>(parameters.amplitudePercent) * 0.01f;
    const std::uint32_t fiftieth = samplesPerSecond / 50;
    active_ = parameters.frequency != 0 && parameters.amplitudePercent != 0 && fiftieth != 0;
    step_ = active_ ? static_cast<double>(frequency) * 6.283184 / fiftieth : 0;
}

SONAVEL_VECTOR_CLONES
void CModOscillator::Run(std::span<float> gains) {
    if (!active_) return;
    std::array<float, kMaxPieceFrames> phases;
    for (std::size_t i = 0; i < gains.size(); ++i) {
        phases[i] = phase_;
        phase_ = static_cast<float>(phase_ + step_);
    }
    // The phase runs during the delay, but the gain is left alone.
    const std::size_t waiting = delayFrames_ > frame_ ? delayFrames_ - frame_ : 0;
    const double amplitude = -amplitude_;
    for (std::size_t i = std::min(waiting, gains.size()); i < gains.size(); ++i)
        gains[i] = static_cast<float>(FastSin(phases[i]) * amplitude * gains[i]);
    frame_ += static_cast<std::uint32_t>(gains.size());
}

}  // namespace sonavel
