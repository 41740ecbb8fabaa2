// The complex Fourier transform of 1024 points behind the convolution and the noise reduction, on
// separate real and imaginary arrays so that its butterflies vectorise (M. C. Pease's and
// T. G. Stockham's ordering, radix 4).
#pragma once

#include <array>
#include <span>

namespace sonavel {

inline constexpr int kFftSize = 1024;

struct alignas(32) Spectrum {
    std::array<float, kFftSize> real;
    std::array<float, kFftSize> imaginary;
};

// Forward (e^-i), unscaled. `result` must not be `data`.
void Fft(const Spectrum& data, Spectrum& result);

}  // namespace sonavel
