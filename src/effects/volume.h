// Volume: every sample times a percentage.
#pragma once

#include <span>

namespace sonavel {

struct VolumeParameters {
    int percent = 100;  // 0 to 300
};

// Scales in place, in single precision. Nothing is clipped: loud results wrap when they are stored.
void ScaleVolume(std::span<float> samples, const VolumeParameters& parameters);

}  // namespace sonavel
