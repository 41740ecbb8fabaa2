#include "effects/flanger.h"

#include <algorithm>

#include "effects/fast_trigonometry.h"
#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// The single-precision value of pi, which the sweep has always used.
constexpr double kPi = 3.1415925;

}  // namespace

FlangerSweep::FlangerSweep(const FlangerParameters& parameters, std::uint32_t samplesPerSecond) {
    const float delayMs = static_cast<float>(parameters.delayTenths * 0.1);
    const float modulationHz = static_cast<float>(parameters.modulationTenths * 0.1);
    maxDelay_ = static_cast<std::uint32_t>(static_cast<double>(samplesPerSecond) * delayMs * 0.001);
    radiansPerFrame_ = 2 * kPi * (static_cast<double>(modulationHz) / samplesPerSecond);
}

SONAVEL_VECTOR_CLONES
void FlangerSweep::Delays(std::uint32_t firstFrame, std::span<FlangerDelay> delays) const {
    const double range = maxDelay_;
    const double step = radiansPerFrame_;
    double angle = firstFrame;
    for (FlangerDelay& delay : delays) {
        const double swept = (1 - FastCos(angle * step)) * range * 0.5;
        const double inRange = std::min(std::max(swept, 0.0), range);
        const auto whole = static_cast<std::int32_t>(inRange);
        delay = {static_cast<std::uint32_t>(whole), static_cast<float>(inRange - whole)};
        angle += 1;
    }
}

FlangerChannel::FlangerChannel(std::uint32_t maxDelay)
    : maxDelay_(maxDelay), line_(std::size_t{maxDelay} + 1) {}

void FlangerChannel::Process(std::span<const FlangerDelay> delays, std::span<float> samples) {
    const std::size_t history = std::size_t{maxDelay_} + 1;
    line_.resize(history + samples.size());
    std::copy(samples.begin(), samples.end(), line_.begin() + static_cast<std::ptrdiff_t>(history));
    const float* here = line_.data() + history;
    for (std::size_t i = 0; i < samples.size(); ++i, ++here) {
        const std::size_t whole = delays[i].whole;
        // A delay of 0 reads the oldest input of the line, one frame beyond the longest delay.
        const float a = *(here - (whole ? whole : history));
        const float b = *(here - (whole + 1));
        samples[i] = ((b - a) * delays[i].fraction + a + *here) * 0.5f;
    }
    std::copy(line_.end() - static_cast<std::ptrdiff_t>(history), line_.end(), line_.begin());
}

}  // namespace sonavel
