#include "effects/reverb_taps.h"

#include <algorithm>

namespace sonavel {
namespace {

constexpr int kReflections = 6;

struct EarlyReflection {
    double delayDivisor;
    float gain;
};

constexpr EarlyReflection kEarlyReflections[kReflections] = {
    {10, 0.95f}, {8, 0.9f}, {4, 0.75f}, {3, 0.8f}, {1.5, 0.6f}, {1.2, 0.56f},
};
constexpr double kLateLeadSeconds = 0.05;

using SevenDelays = std::array<std::uint32_t, kReflections + 1>;
using SevenGains = std::array<float, kReflections + 1>;

void FillReflections(const ReverbParameters& parameters, std::uint32_t samplesPerSecond,
                     SevenDelays& delays, SevenGains& gains) {
    delays.fill(0);
    gains.fill(0);
    for (int k = 0; k < std::min(parameters.reflections, kReflections); ++k) {
        delays[k] = static_cast<std::uint32_t>(
            parameters.earlyMs / kEarlyReflections[k].delayDivisor * samplesPerSecond * 0.001);
        gains[k] = kEarlyReflections[k].gain;
    }
    delays[kReflections] = delays[0] ? delays[0] / 2 : 1;
    gains[kReflections] = 1;
}

}  // namespace

ReverbTaps MakeReverbTaps(const ReverbParameters& parameters, std::uint32_t samplesPerSecond) {
    SevenDelays delays;
    SevenGains gains;
    FillReflections(parameters, samplesPerSecond, delays, gains);
    ReverbTaps result;
    for (int k = 0; k <= kReflections; ++k) result.taps[k] = {delays[k], gains[k]};

    // Delays and gains are sorted apart from each other, so that the largest gains fall to the
    // shortest midpoints; the room's sound depends on it.
    std::sort(delays.begin(), delays.end());
    std::sort(gains.begin(), gains.end());
    for (int j = 0; j < kReflections; ++j)
        result.taps[kReflections + 1 + j] = {(delays[j] + delays[j + 1]) / 2,
                                             (gains[6 - j] + gains[5 - j]) * 0.5f};

    result.longest = delays.back();
    auto lead = static_cast<std::uint32_t>(samplesPerSecond * kLateLeadSeconds);
    if (result.longest <= lead) lead = result.longest - 1;
    result.lateStart = result.longest - lead;
    return result;
}

}  // namespace sonavel
