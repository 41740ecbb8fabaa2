// The early reflections of the reverberation: thirteen taps computed from the settings.
#pragma once

#include <array>
#include <cstdint>

namespace sonavel {

struct ReverbParameters {
    int earlyMs = 50;     // 0 to 200
    int timeMs = 1500;    // 0 to 6000
    int reflections = 6;  // 0 to 6
    int dryPercent = 70;
    int wetPercent = 30;
};

struct ReverbTap {
    std::uint32_t delay = 0;  // frames
    float gain = 0;
};

struct ReverbTaps {
    std::array<ReverbTap, 13> taps;
    std::uint32_t longest = 0;    // the longest delay, at least 1
    std::uint32_t lateStart = 0;  // the frame at which the late part begins
};

ReverbTaps MakeReverbTaps(const ReverbParameters& parameters, std::uint32_t samplesPerSecond);

}  // namespace sonavel
