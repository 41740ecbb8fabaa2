#include "effects/delay_filters.h"

#include <algorithm>

#include "platform/vector_clones.h"

namespace sonavel {

namespace {

// So many pieces are taken in before the past moves back to the front.
constexpr std::size_t kPiecesBetweenMoves = 16;

SONAVEL_VECTOR_CLONES
void FeedBack(const float* __restrict delayed, const DampedComb::Taps taps, float gain,
              const float* __restrict input, float* __restrict sum, float* __restrict line,
              std::size_t frames) {
    for (std::size_t i = 0; i < frames; ++i) {
        float damped = 0;
        for (int k = 0; k < DampedComb::kTaps; ++k) damped += taps[k] * *(delayed + i - k);
        sum[i] += delayed[i];
        line[i] = input[i] + damped * gain;
    }
}

SONAVEL_VECTOR_CLONES
void Pass(const float* __restrict delayed, float gain, float* __restrict samples,
          float* __restrict line, std::size_t frames) {
    for (std::size_t i = 0; i < frames; ++i) {
        const float in = samples[i];
        const float out = -gain * in + delayed[i];
        line[i] = out * gain + in;
        samples[i] = out;
    }
}

}  // namespace

float* DelayLine::Extend(std::size_t frames) {
    if (end_ + frames > values_.size()) {
        std::copy(values_.begin() + static_cast<std::ptrdiff_t>(end_ - reach_),
                  values_.begin() + static_cast<std::ptrdiff_t>(end_), values_.begin());
        end_ = reach_;
        values_.resize(std::max(values_.size(), reach_ + kPiecesBetweenMoves * frames));
    }
    return values_.data() + end_;
}

DampedComb::DampedComb(std::uint32_t delayFrames, const Taps& taps, float gain)
    : delay_(std::max(delayFrames, 1u)), taps_(taps), gain_(gain), line_(delay_ + kTaps - 1) {}

void DampedComb::Process(std::span<const float> input, std::span<float> sum) {
    for (std::size_t done = 0; done < input.size(); done += delay_)
        ProcessPiece(input.data() + done, sum.data() + done, std::min(delay_, input.size() - done));
}

void DampedComb::ProcessPiece(const float* input, float* sum, std::size_t frames) {
    float* line = line_.Extend(frames);
    FeedBack(line - delay_, taps_, gain_, input, sum, line, frames);
    line_.Keep(frames);
}

AllPass::AllPass(std::uint32_t delayFrames, float gain)
    : delay_(std::max(delayFrames, 1u)), gain_(gain), line_(delay_) {}

void AllPass::Process(std::span<float> samples) {
    for (std::size_t done = 0; done < samples.size(); done += delay_) {
        const std::size_t frames = std::min(delay_, samples.size() - done);
        float* line = line_.Extend(frames);
        Pass(line - delay_, gain_, samples.data() + done, line, frames);
        line_.Keep(frames);
    }
}

}  // namespace sonavel
