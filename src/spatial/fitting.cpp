#include "spatial/fitting.h"

#include "sound/pair_buffer.h"
#include "sound/sample_io.h"

namespace sonavel {
namespace {

constexpr float kLimit = 32767;

}  // namespace

Fitting::Fitting(float peak, unsigned bits) : tooLoud_(peak > kLimit), eightBits_(bits == 8) {
    if (tooLoud_) factor_ = kLimit / peak;
}

void Fitting::Fit(std::span<float> pairs) const {
    if (tooLoud_) MultiplyBy(factor_, pairs);
    if (eightBits_) MultiplyBy(kEightBitScale, pairs);
    if (tooLoud_ || eightBits_) HoldWithinLimits(pairs, 16);
}

}  // namespace sonavel
