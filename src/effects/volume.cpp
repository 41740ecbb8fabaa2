#include "effects/volume.h"

namespace sonavel {

void ScaleVolume(std::span<float> samples, const VolumeParameters& parameters) {
    const float factor = static_cast<float>(parameters.percent) * 0.01f;
    for (float& sample : samples) sample = factor * sample;
}

}  // namespace sonavel
