#include "spatial/fft.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

struct ComplexTable {
    std::array<float, kFftSize> real;
    std::array<float, kFftSize> imaginary;
};

// e^(-2 pi i k / 1024), and for the first stage of 1024 points its powers for k, 2k and 3k side by
// side.
struct Twiddles {
    Twiddles() {
        for (int k = 0; k < kFftSize; ++k) {
            const double angle = -2 * std::numbers::pi * k / kFftSize;
            all.real[k] = static_cast<float>(std::cos(angle));
            all.imaginary[k] = static_cast<float>(std::sin(angle));
        }
        for (int power = 1; power <= 3; ++power)
            for (int k = 0; k < kFftSize / 4; ++k) {
                first[power - 1].real[k] = all.real[power * k];
                first[power - 1].imaginary[k] = all.imaginary[power * k];
            }
    }
    ComplexTable all;
    ComplexTable first[3];
};

const Twiddles& TwiddleTable() {
    static const Twiddles table;
    return table;
}

struct Complex {
    float real;
    float imaginary;
};

inline Complex operator+(Complex a, Complex b) {
    return {a.real + b.real, a.imaginary + b.imaginary};
}
inline Complex operator-(Complex a, Complex b) {
    return {a.real - b.real, a.imaginary - b.imaginary};
}
inline Complex operator*(Complex a, Complex b) {
    return {a.real * b.real - a.imaginary * b.imaginary,
            a.real * b.imaginary + a.imaginary * b.real};
}
inline Complex TimesMinusI(Complex a) {
    return {a.imaginary, -a.real};
}

inline Complex At(const Spectrum& data, int index) {
    return {data.real[index], data.imaginary[index]};
}
inline Complex At(const ComplexTable& table, int index) {
    return {table.real[index], table.imaginary[index]};
}
inline void Put(Spectrum& data, int index, Complex value) {
    data.real[index] = value.real;
    data.imaginary[index] = value.imaginary;
}

// The four results of one butterfly of radix 4 go to out, out + step, ...
inline void Butterfly(const Spectrum& __restrict in, int at, int leg, Complex w1, Complex w2,
                      Complex w3, Spectrum& __restrict out, int to, int step) {
    const Complex a = At(in, at), b = At(in, at + leg);
    const Complex c = At(in, at + 2 * leg), d = At(in, at + 3 * leg);
    const Complex turned = TimesMinusI(b - d);
    Put(out, to, (a + c) + (b + d));
    Put(out, to + step, w1 * ((a - c) + turned));
    Put(out, to + 2 * step, w2 * ((a + c) - (b + d)));
    Put(out, to + 3 * step, w3 * ((a - c) - turned));
}

// The first stage: one transform of `length` points, its butterflies side by side.
inline void FirstStage(int length, const Spectrum& __restrict in, Spectrum& __restrict out) {
    const Twiddles& table = TwiddleTable();
    const int quarter = length / 4;
    const int spread = kFftSize / length;
    for (int p = 0; p < quarter; ++p)
        Butterfly(in, p, quarter, At(table.first[0], spread * p), At(table.first[1], spread * p),
                  At(table.first[2], spread * p), out, 4 * p, 1);
}

// A later stage: `stride` transforms of `length` points lie interleaved in `in`, and 4 * stride
// transforms of length / 4 points in `out`. Every butterfly of the inner loop has the same
// twiddles.
inline void LaterStage(int length, int stride, const Spectrum& __restrict in,
                       Spectrum& __restrict out) {
    const ComplexTable& table = TwiddleTable().all;
    const int quarter = length / 4;
    const int spread = kFftSize / length;
    for (int p = 0; p < quarter; ++p) {
        const Complex w1 = At(table, p * spread);
        const Complex w2 = At(table, 2 * p * spread);
        const Complex w3 = At(table, 3 * p * spread);
        for (int q = 0; q < stride; ++q)
            Butterfly(in, stride * p + q, stride * quarter, w1, w2, w3, out, stride * 4 * p + q,
                      stride);
    }
}

}  // namespace

SONAVEL_VECTOR_CLONES
void Fft(Spectrum& data, int log2Size) {
    Spectrum scratch;
    Spectrum* from = &data;
    Spectrum* to = &scratch;
    int length = 1 << log2Size;
    FirstStage(length, *from, *to);
    for (int stride = 4; stride < 1 << log2Size; stride *= 4) {
        std::swap(from, to);
        length /= 4;
        // Said with the constant, so that the shortest inner loop becomes one vector.
        if (stride == 4)
            LaterStage(length, 4, *from, *to);
        else
            LaterStage(length, stride, *from, *to);
    }
    if (to != &data) data = *to;
}

}  // namespace sonavel
