#include "sound/power_spectrum.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <numbers>
#include <utility>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

typedef float Four __attribute__((vector_size(16)));
typedef float Eight __attribute__((vector_size(32)));

struct Parts {
    float* real;
    float* imaginary;
};

// Vectors come back inside a struct, which all processors hand over alike.
template <class Real>
struct Loaded {
    Real value;
};
template <class Real>
[[gnu::always_inline]] inline Loaded<Real> Load(const float* from) {
    Loaded<Real> loaded;
    std::memcpy(&loaded.value, from, sizeof loaded.value);
    return loaded;
}
template <class Real>
[[gnu::always_inline]] inline void Store(float* to, const Real& value) {
    std::memcpy(to, &value, sizeof value);
}

struct Factor {
    float real, imaginary;
};

// Stores w * (real + i imaginary).
template <class Real>
[[gnu::always_inline]] inline void PutTurned(const Parts& to, std::size_t at, const Factor& w,
                                             const Real& real, const Real& imaginary) {
    Store<Real>(to.real + at, w.real * real - w.imaginary * imaginary);
    Store<Real>(to.imaginary + at, w.real * imaginary + w.imaginary * real);
}

// One transform of the stage: points a quarter apart, `stride` of them side by side with the same
// factors.
template <class Real>
[[gnu::always_inline]] inline void Butterflies(const Parts& in, const Parts& out, std::size_t from,
                                               std::size_t leg, std::size_t to, std::size_t stride,
                                               const Factor* w) {
    constexpr std::size_t kLanes =
        sizeof(Real) / sizeof(float);  // NOLINT(bugprone-sizeof-expression)
    for (std::size_t q = 0; q < stride; q += kLanes) {
        const float* re = in.real + from + q;
        const float* im = in.imaginary + from + q;
        const Real ar = Load<Real>(re).value, ai = Load<Real>(im).value;
        const Real br = Load<Real>(re + leg).value, bi = Load<Real>(im + leg).value;
        const Real cr = Load<Real>(re + 2 * leg).value, ci = Load<Real>(im + 2 * leg).value;
        const Real dr = Load<Real>(re + 3 * leg).value, di = Load<Real>(im + 3 * leg).value;
        const std::size_t at = to + q;
        Store<Real>(out.real + at, (ar + cr) + (br + dr));
        Store<Real>(out.imaginary + at, (ai + ci) + (bi + di));
        PutTurned<Real>(out, at + stride, w[0], (ar - cr) + (bi - di), (ai - ci) - (br - dr));
        PutTurned<Real>(out, at + 2 * stride, w[1], (ar + cr) - (br + dr), (ai + ci) - (bi + di));
        PutTurned<Real>(out, at + 3 * stride, w[2], (ar - cr) - (bi - di), (ai - ci) + (br - dr));
    }
}

struct Stage {
    Parts in, out;
    std::size_t points, stride;
    const float* cosines;  // of twice as many points
    const float* sines;

    Factor At(std::size_t k) const { return {cosines[2 * k], sines[2 * k]}; }
};

template <class Real>
[[gnu::always_inline]] inline void RadixFour(const Stage& stage) {
    const std::size_t quarter = stage.points / stage.stride / 4;
    for (std::size_t p = 0; p < quarter; ++p) {
        const std::size_t k = p * stage.stride;
        const std::size_t half = stage.points / 2;
        // The table ends at half a turn; the third factor may lie behind it.
        Factor third = stage.At(3 * k < half ? 3 * k : 3 * k - half);
        if (3 * k >= half) third = {-third.real, -third.imaginary};
        const Factor w[3] = {stage.At(k), stage.At(2 * k), third};
        Butterflies<Real>(stage.in, stage.out, stage.stride * p, stage.stride * quarter,
                          stage.stride * 4 * p, stage.stride, w);
    }
}

[[gnu::always_inline]] inline void RadixTwo(const Stage& stage) {
    const std::size_t half = stage.stride;
    for (std::size_t q = 0; q < half; q += 8) {
        const Eight ar = Load<Eight>(stage.in.real + q).value,
                    br = Load<Eight>(stage.in.real + half + q).value;
        const Eight ai = Load<Eight>(stage.in.imaginary + q).value;
        const Eight bi = Load<Eight>(stage.in.imaginary + half + q).value;
        Store<Eight>(stage.out.real + q, ar + br);
        Store<Eight>(stage.out.imaginary + q, ai + bi);
        Store<Eight>(stage.out.real + half + q, ar - br);
        Store<Eight>(stage.out.imaginary + half + q, ai - bi);
    }
}

// All stages, from `stage.in` back and forth; tells where the result lies.
SONAVEL_VECTOR_CLONES
bool TransformAll(Stage stage) {
    bool isInFirst = true;
    for (stage.stride = 1; stage.stride < stage.points; isInFirst = !isInFirst) {
        const std::size_t left = stage.points / stage.stride;
        if (left == 2)
            RadixTwo(stage);
        else if (stage.stride == 1)
            RadixFour<float>(stage);
        else if (stage.stride == 4)
            RadixFour<Four>(stage);
        else
            RadixFour<Eight>(stage);
        stage.stride *= left == 2 ? 2 : 4;
        std::swap(stage.in, stage.out);
    }
    return isInFirst;
}

double WindowValue(WindowShape shape, double turn) {
    const double angle = 2 * std::numbers::pi * turn;
    if (shape == WindowShape::kHann) return 0.5 - 0.5 * std::cos(angle);
    return 0.35875 - 0.48829 * std::cos(angle) + 0.14128 * std::cos(2 * angle) -
           0.01168 * std::cos(3 * angle);
}

}  // namespace

PowerSpectrum::PowerSpectrum(unsigned windowFrames, WindowShape shape) : window_(windowFrames) {
    const std::size_t points = windowFrames / 2;
    for (Complexes* room : {&twiddles_, &data_, &scratch_}) {
        room->real.resize(points);
        room->imaginary.resize(points);
    }
    double sum = 0;
    for (unsigned frame = 0; frame < windowFrames; ++frame) {
        window_[frame] = static_cast<float>(WindowValue(shape, double{1} * frame / windowFrames));
        sum += window_[frame];
    }
    for (std::size_t k = 0; k < points; ++k) {
        const double angle = -2 * std::numbers::pi * static_cast<double>(k) / windowFrames;
        twiddles_.real[k] = static_cast<float>(std::cos(angle));
        twiddles_.imaginary[k] = static_cast<float>(std::sin(angle));
    }
    scale_ = static_cast<float>(4 / (sum * sum));
}

void PowerSpectrum::Transform() {
    const bool isInFirst = TransformAll({.in = {data_.real.data(), data_.imaginary.data()},
                                         .out = {scratch_.real.data(), scratch_.imaginary.data()},
                                         .points = data_.real.size(),
                                         .stride = 1,
                                         .cosines = twiddles_.real.data(),
                                         .sines = twiddles_.imaginary.data()});
    if (!isInFirst) std::swap(data_, scratch_);
}

void PowerSpectrum::Compute(std::span<const float> frames, std::span<float> power) {
    const std::size_t points = data_.real.size();
    for (std::size_t k = 0; k < points; ++k) {
        data_.real[k] = frames[2 * k] * window_[2 * k];
        data_.imaginary[k] = frames[2 * k + 1] * window_[2 * k + 1];
    }
    Transform();
    // Even and odd frames went in as real and imaginary parts; their transforms come apart again.
    for (std::size_t k = 0; k <= points; ++k) {
        const std::size_t a = k % points, b = (points - k) % points;
        const float evenReal = data_.real[a] + data_.real[b];
        const float evenImaginary = data_.imaginary[a] - data_.imaginary[b];
        const float oddReal = data_.imaginary[a] + data_.imaginary[b];
        const float oddImaginary = data_.real[b] - data_.real[a];
        const float wr = k < points ? twiddles_.real[k] : -1;
        const float wi = k < points ? twiddles_.imaginary[k] : 0;
        const float real = evenReal + wr * oddReal - wi * oddImaginary;
        const float imaginary = evenImaginary + wr * oddImaginary + wi * oddReal;
        power[k] = (real * real + imaginary * imaginary) * scale_ / 4;
    }
}

}  // namespace sonavel
