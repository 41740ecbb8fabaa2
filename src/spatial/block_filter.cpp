#include "spatial/block_filter.h"

#include <cmath>

namespace sonavel {
namespace {

constexpr float kRampStep = 0.0013020834f;  // 1 / 768
constexpr float kStepDegrees = 10;

float RampUp(int frame) {
    return static_cast<float>(frame) * kRampStep;
}
float RampDown(int frame) {
    return 1 - RampUp(frame);
}

}  // namespace

EarSpectra::EarSpectra(const SourceDirection& direction) {
    LoadResponseSpectrum(left, direction.leftIndex);
    LoadResponseSpectrum(right, direction.rightIndex);
}

FixedSourceFilter::FixedSourceFilter(const SourcePosition& position)
    : ears_(PositionToDirection(position)), gain_(DistanceGain(position)) {}

void FixedSourceFilter::Process(BlockInput input, float, BlockOutput output) {
    ConvolveBlock(input, ears_.left, ears_.right, output);
    for (float& value : output) value *= gain_;
}

bool KeepsResponses(const SourceDirection& from, const SourceDirection& to) {
    if (from.leftIndex == to.leftIndex && from.rightIndex == to.rightIndex) return true;
    float turned = std::abs(to.azimuth - from.azimuth);
    if (turned > 180) turned = 360 - turned;
    return turned <= kStepDegrees && std::abs(to.elevation - from.elevation) <= kStepDegrees;
}

MovingSourceFilter::MovingSourceFilter(const SourcePath& path)
    : path_(path),
      direction_(PositionToDirection(path.At(0))),
      ears_(std::make_unique<EarSpectra>(direction_)),
      gain_(DistanceGain(path.At(0))) {}

void MovingSourceFilter::Process(BlockInput input, float t, BlockOutput output) {
    const SourcePosition position = path_.At(t);
    const SourceDirection direction = PositionToDirection(position);
    const float gain = DistanceGain(position);
    if (KeepsResponses(direction_, direction)) {
        ConvolveBlock(input, ears_->left, ears_->right, output);
        for (int j = 0; j < 2 * kBlockFrames; ++j)
            output[j] *= gain * RampUp(j / 2) + gain_ * RampDown(j / 2);
    } else {
        ConvolveBlock(input, ears_->left, ears_->right, former_);
        *ears_ = EarSpectra(direction);
        ConvolveBlock(input, ears_->left, ears_->right, output);
        for (int j = 0; j < 2 * kBlockFrames; ++j)
            output[j] = output[j] * RampUp(j / 2) * gain + former_[j] * RampDown(j / 2) * gain_;
        direction_ = direction;
    }
    gain_ = gain;
}

}  // namespace sonavel
