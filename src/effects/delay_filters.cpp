#include "effects/delay_filters.h"

#include <algorithm>

namespace sonavel {

float* DelayLine::Extend(std::size_t frames) {
    values_.resize(reach_ + frames);
    return values_.data() + reach_;
}

void DelayLine::Keep() {
    std::copy(values_.end() - static_cast<std::ptrdiff_t>(reach_), values_.end(), values_.begin());
}

DampedComb::DampedComb(std::uint32_t delayFrames, const Taps& taps, float gain)
    : delay_(std::max(delayFrames, 1u)), taps_(taps), gain_(gain), line_(delay_ + kTaps - 1) {}

void DampedComb::Process(std::span<const float> input, std::span<float> sum) {
    for (std::size_t done = 0; done < input.size(); done += delay_)
        ProcessPiece(input.data() + done, sum.data() + done, std::min(delay_, input.size() - done));
}

void DampedComb::ProcessPiece(const float* input, float* sum, std::size_t frames) {
    float* line = line_.Extend(frames);
    const float* delayed = line - delay_;
    for (std::size_t i = 0; i < frames; ++i) {
        float damped = 0;
        for (int k = 0; k < kTaps; ++k) damped += taps_[k] * *(delayed + i - k);
        sum[i] += delayed[i];
        line[i] = input[i] + damped * gain_;
    }
    line_.Keep();
}

AllPass::AllPass(std::uint32_t delayFrames, float gain)
    : delay_(std::max(delayFrames, 1u)), gain_(gain), line_(delay_) {}

void AllPass::Process(std::span<float> samples) {
    for (std::size_t done = 0; done < samples.size(); done += delay_) {
        const std::size_t frames = std::min(delay_, samples.size() - done);
        float* piece = samples.data() + done;
        float* line = line_.Extend(frames);
        const float* delayed = line - delay_;
        for (std::size_t i = 0; i < frames; ++i) {
            const float in = piece[i];
            const float out = -gain_ * in + delayed[i];
            line[i] = out * gain_ + in;
            piece[i] = out;
        }
        line_.Keep();
    }
}

}  // namespace sonavel
