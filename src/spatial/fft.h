// The complex Fourier transform behind the convolution, on separate real and imaginary arrays so
// that its butterflies vectorise (M. C. Pease's and T. G. Stockham's ordering, radix 4).
#pragma once

#include <array>
#include <span>

namespace sonavel {

inline constexpr int kFftLog2Size = 10;
inline constexpr int kFftSize = 1 << kFftLog2Size;

struct alignas(32) Spectrum {
    std::array<float, kFftSize> real;
    std::array<float, kFftSize> imaginary;
};

// In place, forward (e^-i), unscaled, over the first 2^log2Size points; log2Size is even and at
// most kFftLog2Size.
void Fft(Spectrum& data, int log2Size);

}  // namespace sonavel
