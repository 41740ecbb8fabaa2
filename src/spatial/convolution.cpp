#include "spatial/convolution.h"

#include <algorithm>

#include "platform/vector_clones.h"
#include "spatial/hrir_table.h"

namespace sonavel {
namespace {

// Replaces x by (x * left + i * x * right) / 1024, with real and imaginary parts exchanged. Both
// products belong to real signals, so one inverse transform serves both ears; exchanging the parts
// before and after a forward transform makes it the inverse one.
SONAVEL_VECTOR_CLONES
void MultiplyBothEars(Spectrum& x, const Spectrum& left, const Spectrum& right) {
    constexpr float kScale = 0.0009765625f;
    for (int k = 0; k < kFftSize; ++k) {
        const float xr = x.real[k];
        const float xi = x.imaginary[k];
        const float lr = xr * left.real[k] - xi * left.imaginary[k];
        const float li = xr * left.imaginary[k] + xi * left.real[k];
        const float rr = xr * right.real[k] - xi * right.imaginary[k];
        const float ri = xr * right.imaginary[k] + xi * right.real[k];
        x.real[k] = (li + rr) * kScale;
        x.imaginary[k] = (lr - ri) * kScale;
    }
}

}  // namespace

void LoadResponseSpectrum(Spectrum& spectrum, int index) {
    const std::span<const double, kHrirTaps> taps = HrirTable::Get().Response(index);
    Spectrum response{};
    std::transform(taps.begin(), taps.end(), response.real.begin(),
                   [](double tap) { return static_cast<float>(tap); });
    Fft(response, spectrum);
}

void ConvolveBlock(std::span<const float, kBlockInput> input, const Spectrum& left,
                   const Spectrum& right, std::span<float, 2 * kBlockFrames> output) {
    Spectrum x, transformed;
    std::copy(input.begin(), input.end(), x.real.begin());
    x.imaginary.fill(0);
    Fft(x, transformed);
    MultiplyBothEars(transformed, left, right);
    Fft(transformed, x);
    for (int j = 0; j < kBlockFrames; ++j) {
        output[2 * j] = x.imaginary[kBlockHistory + j];
        output[2 * j + 1] = x.real[kBlockHistory + j];
    }
}

}  // namespace sonavel
