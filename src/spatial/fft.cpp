#include "spatial/fft.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace sonavel {
namespace {

struct Twiddles {
    Twiddles() {
        for (int k = 0; k < kFftSize; ++k) {
            const double angle = -2 * std::numbers::pi * k / kFftSize;
            real[k] = static_cast<float>(std::cos(angle));
            imaginary[k] = static_cast<float>(std::sin(angle));
        }
    }
    std::array<float, kFftSize> real;
    std::array<float, kFftSize> imaginary;
};

const Twiddles& TwiddleTable() {
    static const Twiddles table;
    return table;
}

struct Complex {
    float real;
    float imaginary;
};

Complex Twiddle(int index) {
    const Twiddles& table = TwiddleTable();
    return {table.real[index], table.imaginary[index]};
}

// One stage of radix 4: `stride` transforms of `length` points lie interleaved in `in`; the stage
// leaves 4 * stride transforms of length / 4 points interleaved in `out`.
void Stage(int length, int stride, const float* inReal, const float* inImaginary, float* outReal,
           float* outImaginary) {
    const int quarter = length / 4;
    const int step = kFftSize / length;
    const int leg = stride * quarter;
    for (int p = 0; p < quarter; ++p) {
        const Complex w1 = Twiddle(p * step);
        const Complex w2 = Twiddle(2 * p * step);
        const Complex w3 = Twiddle(3 * p * step);
        const float* ar = inReal + stride * p;
        const float* ai = inImaginary + stride * p;
        float* yr = outReal + stride * 4 * p;
        float* yi = outImaginary + stride * 4 * p;
        for (int q = 0; q < stride; ++q) {
            const float sum02r = ar[q] + ar[q + 2 * leg], sum02i = ai[q] + ai[q + 2 * leg];
            const float dif02r = ar[q] - ar[q + 2 * leg], dif02i = ai[q] - ai[q + 2 * leg];
            const float sum13r = ar[q + leg] + ar[q + 3 * leg];
            const float sum13i = ai[q + leg] + ai[q + 3 * leg];
            const float dif13r = ar[q + leg] - ar[q + 3 * leg];
            const float dif13i = ai[q + leg] - ai[q + 3 * leg];
            yr[q] = sum02r + sum13r;
            yi[q] = sum02i + sum13i;
            const float r1 = dif02r + dif13i, i1 = dif02i - dif13r;
            yr[q + stride] = w1.real * r1 - w1.imaginary * i1;
            yi[q + stride] = w1.real * i1 + w1.imaginary * r1;
            const float r2 = sum02r - sum13r, i2 = sum02i - sum13i;
            yr[q + 2 * stride] = w2.real * r2 - w2.imaginary * i2;
            yi[q + 2 * stride] = w2.real * i2 + w2.imaginary * r2;
            const float r3 = dif02r - dif13i, i3 = dif02i + dif13r;
            yr[q + 3 * stride] = w3.real * r3 - w3.imaginary * i3;
            yi[q + 3 * stride] = w3.real * i3 + w3.imaginary * r3;
        }
    }
}

}  // namespace

void Fft(Spectrum& data, int log2Size) {
    alignas(32) Spectrum scratch;
    Spectrum* from = &data;
    Spectrum* to = &scratch;
    int stride = 1;
    for (int length = 1 << log2Size; length > 1; length /= 4, stride *= 4) {
        Stage(length, stride, from->real.data(), from->imaginary.data(), to->real.data(),
              to->imaginary.data());
        std::swap(from, to);
    }
    if (from != &data) data = *from;
}

}  // namespace sonavel
