#include "spatial/block_filter.h"

#include <cmath>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

constexpr float kRampStep = 0.0013020834f;  // 1 / 768
constexpr float kStepDegrees = 10;

inline float RampUp(int frame) {
    return static_cast<float>(frame) * kRampStep;
}
inline float RampDown(int frame) {
    return 1 - RampUp(frame);
}

SONAVEL_VECTOR_CLONES
void Glide(BlockOutput output, float fromGain, float toGain) {
    for (int j = 0; j < 2 * kBlockFrames; ++j)
        output[j] *= toGain * RampUp(j / 2) + fromGain * RampDown(j / 2);
}

SONAVEL_VECTOR_CLONES
void Fade(const std::array<float, 2 * kBlockFrames>& former, float fromGain, float toGain,
          BlockOutput output) {
    for (int j = 0; j < 2 * kBlockFrames; ++j)
        output[j] = output[j] * RampUp(j / 2) * toGain + former[j] * RampDown(j / 2) * fromGain;
}

}  // namespace

EarSpectra::EarSpectra(const SourceDirection& direction) {
    LoadResponseSpectrum(left, direction.leftIndex);
    LoadResponseSpectrum(right, direction.rightIndex);
}

FixedSourceFilter::FixedSourceFilter(const SourcePosition& position)
    : ears_(PositionToDirection(position)), gain_(DistanceGain(position)) {}

void FixedSourceFilter::Process(BlockInput input, std::size_t, BlockOutput output) const {
    ConvolveBlock(input, ears_.left, ears_.right, output);
    for (float& value : output) value *= gain_;
}

bool KeepsResponses(const SourceDirection& from, const SourceDirection& to) {
    if (from.leftIndex == to.leftIndex && from.rightIndex == to.rightIndex) return true;
    float turned = std::abs(to.azimuth - from.azimuth);
    if (turned > 180) turned = 360 - turned;
    return turned <= kStepDegrees && std::abs(to.elevation - from.elevation) <= kStepDegrees;
}

const EarSpectra* MovingSourceFilter::EarsOf(const SourceDirection& direction) {
    return &ears_.try_emplace({direction.leftIndex, direction.rightIndex}, direction).first->second;
}

MovingSourceFilter::MovingSourceFilter(const SourcePath& path, std::uint32_t rangeFrames) {
    const auto values = static_cast<float>(std::size_t{2} * rangeFrames);
    SourceDirection kept = PositionToDirection(path.At(0));
    Passing passing{nullptr, EarsOf(kept), 0, DistanceGain(path.At(0))};
    passings_.reserve(rangeFrames / kBlockFrames + 1);
    for (std::size_t done = 0; done < rangeFrames; done += kBlockFrames) {
        const SourcePosition position = path.At(static_cast<float>(2 * done) / values);
        const SourceDirection direction = PositionToDirection(position);
        passing.from = passing.to;
        passing.fromGain = passing.toGain;
        passing.toGain = DistanceGain(position);
        if (!KeepsResponses(kept, direction)) {
            kept = direction;
            passing.to = EarsOf(kept);
        }
        passings_.push_back(passing);
    }
}

void MovingSourceFilter::Process(BlockInput input, std::size_t block, BlockOutput output) const {
    const Passing& passing = passings_[block];
    ConvolveBlock(input, passing.to->left, passing.to->right, output);
    if (passing.from == passing.to) {
        Glide(output, passing.fromGain, passing.toGain);
        return;
    }
    std::array<float, 2 * kBlockFrames> former;
    ConvolveBlock(input, passing.from->left, passing.from->right, former);
    Fade(former, passing.fromGain, passing.toGain, output);
}

}  // namespace sonavel
