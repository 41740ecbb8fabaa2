#include "sound/fft.h"

#include <cmath>
#include <cstring>
#include <numbers>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

struct ComplexTable {
    std::array<float, kFftSize> real;
    std::array<float, kFftSize> imaginary;
};

// e^(-2 pi i k / 1024), and for the first stage its powers for k, 2k and 3k side by side.
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

// Butterflies side by side are vectors of so many floats. Said outright, because the compiler
// leaves most of these loops alone.
typedef float Four __attribute__((vector_size(16)));
typedef float Eight __attribute__((vector_size(32)));

template <class Real>
struct Complex {
    Real real;
    Real imaginary;
};

template <class Real>
[[gnu::always_inline]] inline Complex<Real> operator+(const Complex<Real>& a,
                                                      const Complex<Real>& b) {
    return {a.real + b.real, a.imaginary + b.imaginary};
}
template <class Real>
[[gnu::always_inline]] inline Complex<Real> operator-(const Complex<Real>& a,
                                                      const Complex<Real>& b) {
    return {a.real - b.real, a.imaginary - b.imaginary};
}
template <class Factor, class Real>
[[gnu::always_inline]] inline Complex<Real> operator*(const Complex<Factor>& a,
                                                      const Complex<Real>& b) {
    return {a.real * b.real - a.imaginary * b.imaginary,
            a.real * b.imaginary + a.imaginary * b.real};
}
template <class Real>
[[gnu::always_inline]] inline Complex<Real> TimesMinusI(const Complex<Real>& a) {
    return {a.imaginary, -a.real};
}

template <class Real, class Table>
[[gnu::always_inline]] inline Complex<Real> At(const Table& table, int index) {
    Complex<Real> value;
    std::memcpy(&value.real, table.real.data() + index, sizeof(Real));
    std::memcpy(&value.imaginary, table.imaginary.data() + index, sizeof(Real));
    return value;
}
template <class Real>
[[gnu::always_inline]] inline void Put(Spectrum& data, int index, const Complex<Real>& value) {
    std::memcpy(data.real.data() + index, &value.real, sizeof(Real));
    std::memcpy(data.imaginary.data() + index, &value.imaginary, sizeof(Real));
}

template <class Real>
struct Quartet {
    Complex<Real> values[4];
};

// Butterflies of radix 4 on the points from `at` on, a quarter of the transform apart.
template <class Real, class Factor>
[[gnu::always_inline]] inline Quartet<Real> Butterflies(const Spectrum& in, int at, int leg,
                                                        const Complex<Factor>& w1,
                                                        const Complex<Factor>& w2,
                                                        const Complex<Factor>& w3) {
    const auto a = At<Real>(in, at), b = At<Real>(in, at + leg);
    const auto c = At<Real>(in, at + 2 * leg), d = At<Real>(in, at + 3 * leg);
    const auto turned = TimesMinusI(b - d);
    return {(a + c) + (b + d), w1 * ((a - c) + turned), w2 * ((a + c) - (b + d)),
            w3 * ((a - c) - turned)};
}

// Stores the first lanes of all four, then the second ones, and so on.
[[gnu::always_inline]] inline void PutTransposed(const Four& a, const Four& b, const Four& c,
                                                 const Four& d, float* to) {
    const Four lowAB = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const Four highAB = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const Four lowCD = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const Four highCD = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    const Four rows[4] = {__builtin_shufflevector(lowAB, lowCD, 0, 1, 4, 5),
                          __builtin_shufflevector(lowAB, lowCD, 2, 3, 6, 7),
                          __builtin_shufflevector(highAB, highCD, 0, 1, 4, 5),
                          __builtin_shufflevector(highAB, highCD, 2, 3, 6, 7)};
    std::memcpy(to, rows, sizeof rows);
}

// The first stage: one transform of all points, whose twiddles lie side by side.
[[gnu::always_inline]] inline void FirstStage(const Spectrum& in, Spectrum& out) {
    const ComplexTable* table = TwiddleTable().first;
    constexpr int kQuarter = kFftSize / 4;
    for (int p = 0; p < kQuarter; p += 4) {
        const auto [v] = Butterflies<Four>(in, p, kQuarter, At<Four>(table[0], p),
                                           At<Four>(table[1], p), At<Four>(table[2], p));
        PutTransposed(v[0].real, v[1].real, v[2].real, v[3].real, out.real.data() + 4 * p);
        PutTransposed(v[0].imaginary, v[1].imaginary, v[2].imaginary, v[3].imaginary,
                      out.imaginary.data() + 4 * p);
    }
}

// A later stage: `stride` transforms lie interleaved in `in`, and 4 * stride transforms of a
// quarter of their length in `out`. Every butterfly of the inner loop has the same twiddles.
template <class Real, int stride>
[[gnu::always_inline]] inline void LaterStage(const Spectrum& in, Spectrum& out) {
    const ComplexTable& table = TwiddleTable().all;
    constexpr int kLanes = sizeof(Real) / sizeof(float);
    constexpr int kQuarter = kFftSize / stride / 4;
    for (int p = 0; p < kQuarter; ++p) {
        const auto w1 = At<float>(table, p * stride);
        const auto w2 = At<float>(table, 2 * p * stride);
        const auto w3 = At<float>(table, 3 * p * stride);
        for (int q = 0; q < stride; q += kLanes) {
            const auto [v] = Butterflies<Real>(in, stride * p + q, stride * kQuarter, w1, w2, w3);
            for (int leg = 0; leg < 4; ++leg) Put(out, stride * (4 * p + leg) + q, v[leg]);
        }
    }
}

}  // namespace

SONAVEL_VECTOR_CLONES
void Fft(const Spectrum& data, Spectrum& result) {
    Spectrum scratch;
    FirstStage(data, result);
    LaterStage<Four, 4>(result, scratch);
    LaterStage<Eight, 16>(scratch, result);
    LaterStage<Eight, 64>(result, scratch);
    LaterStage<Eight, 256>(scratch, result);
}

}  // namespace sonavel
