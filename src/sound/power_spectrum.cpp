#include "sound/power_spectrum.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <numbers>
#include <utility>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Numbers side by side. Said outright, because the compiler leaves most of these loops alone.
typedef float Eight __attribute__((vector_size(32)));
constexpr std::size_t kLanes = 8;  // of Eight

struct Parts {
    float* real;
    float* imaginary;
};

// Vectors come back inside a struct, which all processors hand over alike.
template <class Real>
struct Loaded {
    Real value;
};
template <class Real = Eight>
[[gnu::always_inline]] inline Loaded<Real> Load(const float* from) {
    Loaded<Real> loaded;
    std::memcpy(&loaded.value, from, sizeof loaded.value);
    return loaded;
}
template <class Real>
[[gnu::always_inline]] inline void Store(float* to, const Real& value) {
    std::memcpy(to, &value, sizeof value);
}

template <class Real>
struct Complex {
    Real real, imaginary;
};

template <class Factor, class Real>
[[gnu::always_inline]] inline Complex<Real> Turned(const Complex<Factor>& w, const Real& real,
                                                   const Real& imaginary) {
    return {w.real * real - w.imaginary * imaginary, w.real * imaginary + w.imaginary * real};
}

template <class Factor>
struct Factors {
    Complex<Factor> first, second, third;
};

template <class Real>
struct Quartet {
    Complex<Real> values[4];
};

// Of points a leg apart from each other.
template <class Real, class Factor>
[[gnu::always_inline]] inline Quartet<Real> Butterflies(const Parts& in, std::size_t from,
                                                        std::size_t leg, const Factors<Factor>& w) {
    const float* re = in.real + from;
    const float* im = in.imaginary + from;
    const Real ar = Load<Real>(re).value, ai = Load<Real>(im).value;
    const Real br = Load<Real>(re + leg).value, bi = Load<Real>(im + leg).value;
    const Real cr = Load<Real>(re + 2 * leg).value, ci = Load<Real>(im + 2 * leg).value;
    const Real dr = Load<Real>(re + 3 * leg).value, di = Load<Real>(im + 3 * leg).value;
    return {Complex<Real>{(ar + cr) + (br + dr), (ai + ci) + (bi + di)},
            Turned(w.first, (ar - cr) + (bi - di), (ai - ci) - (br - dr)),
            Turned(w.second, (ar + cr) - (br + dr), (ai + ci) - (bi + di)),
            Turned(w.third, (ar - cr) - (bi - di), (ai - ci) + (br - dr))};
}

// Stores the first lanes of all four, then the second ones, and so on.
[[gnu::always_inline]] inline void PutTransposed(const Eight& a, const Eight& b, const Eight& c,
                                                 const Eight& d, float* to) {
    const Eight lowAB = __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11);
    const Eight highAB = __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15);
    const Eight lowCD = __builtin_shufflevector(c, d, 0, 8, 1, 9, 2, 10, 3, 11);
    const Eight highCD = __builtin_shufflevector(c, d, 4, 12, 5, 13, 6, 14, 7, 15);
    const Eight rows[4] = {__builtin_shufflevector(lowAB, lowCD, 0, 1, 8, 9, 2, 3, 10, 11),
                           __builtin_shufflevector(lowAB, lowCD, 4, 5, 12, 13, 6, 7, 14, 15),
                           __builtin_shufflevector(highAB, highCD, 0, 1, 8, 9, 2, 3, 10, 11),
                           __builtin_shufflevector(highAB, highCD, 4, 5, 12, 13, 6, 7, 14, 15)};
    std::memcpy(to, rows, sizeof rows);
}

struct Stage {
    Parts in, out;
    std::size_t points, stride;
    Parts turns;  // e^(-i pi k / points), for half a turn
    // Factors of the first two stages, side by side as they are used: a quarter of the points for
    // each leg.
    Parts first, second;

    Complex<float> At(std::size_t k) const { return {turns.real[2 * k], turns.imaginary[2 * k]}; }
};

[[gnu::always_inline]] inline Factors<Eight> LoadFactors(const Parts& table, std::size_t at,
                                                         std::size_t quarter) {
    const float* re = table.real + at;
    const float* im = table.imaginary + at;
    return {{Load(re).value, Load(im).value},
            {Load(re + quarter).value, Load(im + quarter).value},
            {Load(re + 2 * quarter).value, Load(im + 2 * quarter).value}};
}

// One transform of all points.
[[gnu::always_inline]] inline void FirstStage(const Stage& stage) {
    const std::size_t quarter = stage.points / 4;
    for (std::size_t p = 0; p < quarter; p += kLanes) {
        const auto w = LoadFactors(stage.first, p, quarter);
        const auto [v] = Butterflies<Eight>(stage.in, p, quarter, w);
        PutTransposed(v[0].real, v[1].real, v[2].real, v[3].real, stage.out.real + 4 * p);
        PutTransposed(v[0].imaginary, v[1].imaginary, v[2].imaginary, v[3].imaginary,
                      stage.out.imaginary + 4 * p);
    }
}

// Four transforms lie interleaved; a vector holds two points of each.
[[gnu::always_inline]] inline void SecondStage(const Stage& stage) {
    constexpr std::size_t kHalf = kLanes / 2;
    const std::size_t quarter = stage.points / 4;
    const auto put = [](const Eight& values, float* to) {
        std::memcpy(to, &values, sizeof values / 2);
        std::memcpy(to + 4 * kHalf, reinterpret_cast<const float*>(&values) + kHalf,
                    sizeof values / 2);
    };
    for (std::size_t p = 0; p < quarter; p += kLanes) {
        const auto [v] =
            Butterflies<Eight>(stage.in, p, quarter, LoadFactors(stage.second, p, quarter));
        for (std::size_t leg = 0; leg < 4; ++leg) {
            put(v[leg].real, stage.out.real + 4 * p + kHalf * leg);
            put(v[leg].imaginary, stage.out.imaginary + 4 * p + kHalf * leg);
        }
    }
}

// A later stage: `stride` transforms lie interleaved, and have the same factors.
[[gnu::always_inline]] inline void RadixFour(const Stage& stage) {
    const std::size_t stride = stage.stride, half = stage.points / 2;
    const std::size_t quarter = stage.points / stride / 4;
    for (std::size_t p = 0; p < quarter; ++p) {
        const std::size_t k = p * stride;
        // The table ends at half a turn; the third factor may lie behind it.
        Complex<float> third = stage.At(3 * k < half ? 3 * k : 3 * k - half);
        if (3 * k >= half) third = {-third.real, -third.imaginary};
        const Factors<float> w = {stage.At(k), stage.At(2 * k), third};
        for (std::size_t q = 0; q < stride; q += kLanes) {
            const auto [v] = Butterflies<Eight>(stage.in, stride * p + q, stride * quarter, w);
            for (std::size_t leg = 0; leg < 4; ++leg) {
                const std::size_t at = stride * (4 * p + leg) + q;
                Store<Eight>(stage.out.real + at, v[leg].real);
                Store<Eight>(stage.out.imaginary + at, v[leg].imaginary);
            }
        }
    }
}

[[gnu::always_inline]] inline void RadixTwo(const Stage& stage) {
    const std::size_t half = stage.stride;
    for (std::size_t q = 0; q < half; q += kLanes) {
        const Eight ar = Load(stage.in.real + q).value, br = Load(stage.in.real + half + q).value;
        const Eight ai = Load(stage.in.imaginary + q).value;
        const Eight bi = Load(stage.in.imaginary + half + q).value;
        Store<Eight>(stage.out.real + q, ar + br);
        Store<Eight>(stage.out.imaginary + q, ai + bi);
        Store<Eight>(stage.out.real + half + q, ar - br);
        Store<Eight>(stage.out.imaginary + half + q, ai - bi);
    }
}

// All stages, from `stage.in` back and forth; gives the side where the result lies.
[[gnu::always_inline]] inline Parts TransformAll(Stage stage) {
    FirstStage(stage);
    std::swap(stage.in, stage.out);
    SecondStage(stage);
    std::swap(stage.in, stage.out);
    for (stage.stride = 16; stage.stride < stage.points;) {
        const std::size_t left = stage.points / stage.stride;
        if (left == 2)
            RadixTwo(stage);
        else
            RadixFour(stage);
        stage.stride *= left == 2 ? 2 : 4;
        std::swap(stage.in, stage.out);
    }
    return stage.in;
}

// Even frames become real parts, odd ones imaginary parts.
[[gnu::always_inline]] inline void Weigh(const float* frames, const float* window, const Parts& out,
                                         std::size_t points) {
    for (std::size_t k = 0; k < points; k += kLanes) {
        const Eight a = Load(frames + 2 * k).value * Load(window + 2 * k).value;
        const Eight b = Load(frames + 2 * k + kLanes).value * Load(window + 2 * k + kLanes).value;
        Store<Eight>(out.real + k, __builtin_shufflevector(a, b, 0, 2, 4, 6, 8, 10, 12, 14));
        Store<Eight>(out.imaginary + k, __builtin_shufflevector(a, b, 1, 3, 5, 7, 9, 11, 13, 15));
    }
}

[[gnu::always_inline]] inline Loaded<Eight> LoadBackwards(const float* from) {
    const Eight value = Load(from).value;
    return {__builtin_shufflevector(value, value, 7, 6, 5, 4, 3, 2, 1, 0)};
}

// The transforms of the even and the odd frames come apart again, and make that of all.
[[gnu::always_inline]] inline void PutPowers(const Parts& data, const Parts& turns,
                                             std::size_t points, float* power) {
    const float lowest = 2 * (data.real[0] + data.imaginary[0]);
    const float highest = 2 * (data.real[0] - data.imaginary[0]);
    power[0] = lowest * lowest;
    power[points] = highest * highest;
    for (std::size_t next = 1; next < points; next += kLanes) {
        // The last ones overlap with those before, since bin 0 stands alone.
        const std::size_t k = std::min(next, points - kLanes);
        const std::size_t mirrored = points - k - (kLanes - 1);
        const Eight ar = Load(data.real + k).value, ai = Load(data.imaginary + k).value;
        const Eight br = LoadBackwards(data.real + mirrored).value;
        const Eight bi = LoadBackwards(data.imaginary + mirrored).value;
        const Complex<Eight> w = {Load(turns.real + k).value, Load(turns.imaginary + k).value};
        const auto odd = Turned<Eight, Eight>(w, ai + bi, br - ar);
        const Eight real = (ar + br) + odd.real, imaginary = (ai - bi) + odd.imaginary;
        Store<Eight>(power + k, real * real + imaginary * imaginary);
    }
}

SONAVEL_VECTOR_CLONES
void ComputePowers(const float* frames, const float* window, const Stage& stage, float* power) {
    Weigh(frames, window, stage.in, stage.points);
    PutPowers(TransformAll(stage), stage.turns, stage.points, power);
}

double WindowValue(WindowShape shape, double turn) {
    const double angle = 2 * std::numbers::pi * turn;
    if (shape == WindowShape::kHann) return 0.5 - 0.5 * std::cos(angle);
    return 0.35875 - 0.48829 * std::cos(angle) + 0.14128 * std::cos(2 * angle) -
           0.01168 * std::cos(3 * angle);
}

}  // namespace

PowerSpectrum::PowerSpectrum(unsigned windowFrames, WindowShape shape)
    : window_(windowFrames),
      turns_(windowFrames / 2),
      first_(windowFrames / 8 * 3),
      second_(windowFrames / 8 * 3),
      data_(windowFrames / 2),
      scratch_(windowFrames / 2) {
    double sum = 0;
    for (unsigned frame = 0; frame < windowFrames; ++frame)
        sum += WindowValue(shape, double{1} * frame / windowFrames);
    for (unsigned frame = 0; frame < windowFrames; ++frame)
        window_[frame] =
            static_cast<float>(WindowValue(shape, double{1} * frame / windowFrames) / sum);
    const std::size_t points = windowFrames / 2;
    for (std::size_t k = 0; k < points; ++k) turns_.PutTurn(k, k, windowFrames);
    for (std::size_t leg = 1; leg <= 3; ++leg)
        for (std::size_t k = 0; k < points / 4; ++k) {
            const std::size_t at = (leg - 1) * points / 4 + k;
            first_.PutTurn(at, leg * k, points);
            second_.PutTurn(at, leg * (k / 4) * 4, points);
        }
}

void PowerSpectrum::Complexes::PutTurn(std::size_t at, std::size_t part, std::size_t parts) {
    const double angle =
        -2 * std::numbers::pi * static_cast<double>(part) / static_cast<double>(parts);
    real[at] = static_cast<float>(std::cos(angle));
    imaginary[at] = static_cast<float>(std::sin(angle));
}

void PowerSpectrum::Compute(std::span<const float> frames, std::span<float> power) {
    const auto parts = [](Complexes& of) { return Parts{of.real.data(), of.imaginary.data()}; };
    ComputePowers(frames.data(), window_.data(),
                  {.in = parts(data_),
                   .out = parts(scratch_),
                   .points = data_.real.size(),
                   .stride = 1,
                   .turns = parts(turns_),
                   .first = parts(first_),
                   .second = parts(second_)},
                  power.data());
}

}  // namespace sonavel
