#include "effects/flanger.h"

#include <algorithm>

#include "effects/fast_trigonometry.h"

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

void FlangerSweep::Delays(std::uint32_t firstFrame, std::span<double> delays) const {
    const double range = maxDelay_;
    for (std::size_t i = 0; i < delays.size(); ++i) {
        const double angle = static_cast<double>(firstFrame + i) * radiansPerFrame_;
        delays[i] = std::clamp((1 - FastCos(angle)) * range * 0.5, 0.0, range);
    }
}

FlangerChannel::FlangerChannel(std::uint32_t maxDelay)
    : maxDelay_(maxDelay), line_(std::size_t{maxDelay} + 1) {}

void FlangerChannel::Process(std::span<const double> delays, std::span<float> samples) {
    const std::size_t history = std::size_t{maxDelay_} + 1;
    line_.resize(history + samples.size());
    std::copy(samples.begin(), samples.end(), line_.begin() + static_cast<std::ptrdiff_t>(history));
    const float* now = line_.data() + history;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto whole = static_cast<std::size_t>(delays[i]);
        // A delay of 0 reads the oldest input of the line, one frame beyond the longest delay.
        const float* here = now + i;
        const double a = *(here - (whole ? whole : history));
        const double b = *(here - (whole + 1));
        const double fraction = delays[i] - static_cast<double>(whole);
        samples[i] = static_cast<float>(((b - a) * fraction + a + *here) * 0.5);
    }
    std::copy(line_.end() - static_cast<std::ptrdiff_t>(history), line_.end(), line_.begin());
}

}  // namespace sonavel
