#include "sound/power_spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

#include "platform/vector_clones.h"
#include "sound/vector_lanes.h"

namespace sonavel {
namespace {

struct Parts {
    float* real;
    float* imaginary;
};

template <class Real>
struct Complex {
    Real real, imaginary;
};
template <class Real>
[[gnu::always_inline]] inline Complex<Real> LoadPoint(const Parts& from, std::size_t at) {
    return {Load<Real>(from.real + at).value, Load<Real>(from.imaginary + at).value};
}
template <class Real>
[[gnu::always_inline]] inline void StorePoint(const Parts& to, std::size_t at,
                                              const Complex<Real>& value) {
    Store(to.real + at, value.real);
    Store(to.imaginary + at, value.imaginary);
}

template <class Real>
[[gnu::always_inline]] inline Complex<Real> Plus(const Complex<Real>& a, const Complex<Real>& b) {
    return {a.real + b.real, a.imaginary + b.imaginary};
}
template <class Real>
[[gnu::always_inline]] inline Complex<Real> Minus(const Complex<Real>& a, const Complex<Real>& b) {
    return {a.real - b.real, a.imaginary - b.imaginary};
}
template <class Factor, class Real>
[[gnu::always_inline]] inline Complex<Real> Turned(const Complex<Factor>& w,
                                                   const Complex<Real>& a) {
    return {w.real * a.real - w.imaginary * a.imaginary,
            w.real * a.imaginary + w.imaginary * a.real};
}

template <class Real>
struct Quartet {
    Complex<Real> values[4];
};

// A transform of four points.
template <class Real>
[[gnu::always_inline]] inline Quartet<Real> OfFour(const Complex<Real>& a, const Complex<Real>& b,
                                                   const Complex<Real>& c, const Complex<Real>& d) {
    const auto ac = Plus(a, c), bd = Plus(b, d), apart = Minus(a, c), crossed = Minus(b, d);
    const Complex<Real> turned = {crossed.imaginary, -crossed.real};
    return {{Plus(ac, bd), Plus(apart, turned), Minus(ac, bd), Minus(apart, turned)}};
}

// --- The stages

// The factors of a stage, a quarter of its points for each leg but the first.
struct Factors {
    Parts table;
    std::size_t quarter;

    std::size_t PlaceOf(std::size_t leg, std::size_t p) const { return (leg - 1) * quarter + p; }
    // Those of the stage behind it.
    Factors Next() const {
        return {{table.real + 3 * quarter, table.imaginary + 3 * quarter}, quarter / 4};
    }
};

struct StoredPoints {
    Parts parts;

    template <class Real>
    [[gnu::always_inline]] inline Complex<Real> At(std::size_t k) const {
        return LoadPoint<Real>(parts, k);
    }
};

// Even frames are real parts, odd ones imaginary parts.
struct WeighedFrames {
    const float* frames;
    const float* window;

    template <class Real>
    [[gnu::always_inline]] inline Complex<Real> At(std::size_t k) const {
        const std::size_t low = 2 * k, high = low + kLanes<Real>;
        const Real a = Load<Real>(frames + low).value * Load<Real>(window + low).value;
        const Real b = Load<Real>(frames + high).value * Load<Real>(window + high).value;
        return {EverySecond<0>(a, b, Lanes<Real>()).value,
                EverySecond<1>(a, b, Lanes<Real>()).value};
    }
};

// Of all points one transform for each leg is left, which lie `outLeg` from each other.
template <class Real, class Points>
[[gnu::always_inline]] inline void PutStage(const Points& points, const Factors& w,
                                            const Parts& out, std::size_t outLeg) {
    const std::size_t leg = w.quarter;
    for (std::size_t p = 0; p < w.quarter; p += kLanes<Real>) {
        const auto [v] =
            OfFour(points.template At<Real>(p), points.template At<Real>(leg + p),
                   points.template At<Real>(2 * leg + p), points.template At<Real>(3 * leg + p));
        StorePoint(out, p, v[0]);
        for (std::size_t i = 1; i < 4; ++i)
            StorePoint(out, i * outLeg + p,
                       Turned(LoadPoint<Real>(w.table, w.PlaceOf(i, p)), v[i]));
    }
}

// All stages of so many points in place, but for the last blocks.
template <class Real>
[[gnu::always_inline]] inline void PutStages(const Parts& data, std::size_t points, Factors w,
                                             std::size_t last) {
    for (std::size_t size = points; size > last; size /= 4, w = w.Next())
        for (std::size_t first = 0; first < points; first += size) {
            const Parts block = {data.real + first, data.imaginary + first};
            if (w.quarter >= kLanes<Real>)
                PutStage<Real>(StoredPoints{block}, w, block, w.quarter);
            else
                PutStage<Eight>(StoredPoints{block}, w, block, w.quarter);
        }
}

// --- The last blocks, one in each lane

struct LastBlocks {
    const float* const* real;
    const float* const* imaginary;
    Factors w;
    Parts out;
    std::size_t apart;  // of the bins of one block

    Complex<float> FactorOf(std::size_t leg, std::size_t p) const {
        const std::size_t at = w.PlaceOf(leg, p);
        return {w.table.real[at], w.table.imaginary[at]};
    }
};

template <class Real>
[[gnu::always_inline]] inline void LoadFour(const LastBlocks& blocks, std::size_t at,
                                            Complex<Real>* points) {
    Real real[4], imaginary[4];
    LoadAcross(blocks.real, at, real);
    LoadAcross(blocks.imaginary, at, imaginary);
    for (std::size_t i = 0; i < 4; ++i) points[at + i] = {real[i], imaginary[i]};
}

template <class Real>
[[gnu::always_inline]] inline void PutEights(const LastBlocks& blocks) {
    Complex<Real> points[8];
    for (std::size_t at = 0; at < 8; at += 4) LoadFour(blocks, at, points);
    const auto [even] = OfFour(points[0], points[2], points[4], points[6]);
    const auto [odd] = OfFour(points[1], points[3], points[5], points[7]);
    for (std::size_t leg = 0; leg < 4; ++leg) {
        const auto a = leg == 0 ? even[0] : Turned(blocks.FactorOf(leg, 0), even[leg]);
        const auto b = leg == 0 ? odd[0] : Turned(blocks.FactorOf(leg, 1), odd[leg]);
        StorePoint(blocks.out, leg * blocks.apart, Plus(a, b));
        StorePoint(blocks.out, (leg + 4) * blocks.apart, Minus(a, b));
    }
}

template <class Real>
[[gnu::always_inline]] inline void PutSixteens(const LastBlocks& blocks) {
    Complex<Real> points[16];
    for (std::size_t at = 0; at < 16; at += 4) LoadFour(blocks, at, points);
    for (std::size_t p = 0; p < 4; ++p) {
        const auto [v] = OfFour(points[p], points[p + 4], points[p + 8], points[p + 12]);
        points[p] = v[0];
        for (std::size_t leg = 1; leg < 4; ++leg)
            points[p + 4 * leg] = Turned(blocks.FactorOf(leg, p), v[leg]);
    }
    for (std::size_t leg = 0; leg < 4; ++leg) {
        const Complex<Real>* of = points + 4 * leg;
        const auto [v] = OfFour(of[0], of[1], of[2], of[3]);
        for (std::size_t i = 0; i < 4; ++i)
            StorePoint(blocks.out, (leg + 4 * i) * blocks.apart, v[i]);
    }
}

// --- All of it

struct Work {
    const float* frames;
    const float* window;
    std::size_t points;
    Factors factors;  // of the first stage
    Parts turns;      // e^(-i pi k / points), for half a turn
    Parts quarters;   // the points between the stages
    std::size_t quarterStep;
    std::size_t last;                // points of the last blocks
    const std::uint16_t* blockBins;  // the first bin of each of them in a sixteenth
    Parts bins;
};

// Blocks side by side in the vectors are those whose bins are neighbours.
template <class Real>
[[gnu::always_inline]] inline void PutBins(const Work& work, const Factors& w) {
    constexpr std::size_t kCount = kLanes<Real>;
    const std::size_t sixteenth = work.points / 16;
    for (std::size_t at = 0; at < sixteenth; at += work.last)
        for (std::size_t first = 0; first < 16; first += kCount) {
            const float* real[kCount];
            const float* imaginary[kCount];
            for (std::size_t lane = 0; lane < kCount; ++lane) {
                const std::size_t block =
                    (first + lane) % 4 * work.quarterStep + (first + lane) / 4 * sixteenth + at;
                real[lane] = work.quarters.real + block;
                imaginary[lane] = work.quarters.imaginary + block;
            }
            const std::size_t bin = work.blockBins[at / work.last] + first;
            const LastBlocks blocks = {real,
                                       imaginary,
                                       w,
                                       {work.bins.real + bin, work.bins.imaginary + bin},
                                       work.points / work.last};
            if (work.last == 8)
                PutEights<Real>(blocks);
            else
                PutSixteens<Real>(blocks);
        }
}

// A quarter goes through all its stages at once, as it fits into a processor's first cache.
template <class Real>
[[gnu::always_inline]] inline void Transform(const Work& work) {
    PutStage<Real>(WeighedFrames{work.frames, work.window}, work.factors, work.quarters,
                   work.quarterStep);
    Factors w = work.factors.Next();
    for (std::size_t i = 0; i < 4; ++i)
        PutStages<Real>({work.quarters.real + i * work.quarterStep,
                         work.quarters.imaginary + i * work.quarterStep},
                        work.points / 4, w, work.last);
    while (4 * w.quarter > work.last) w = w.Next();
    PutBins<Real>(work, w);
}

// The transforms of the even and the odd frames come apart again, and make that of all.
template <class Real>
[[gnu::always_inline]] inline void PutPowers(const Work& work, float* power) {
    constexpr std::size_t kCount = kLanes<Real>;
    const Parts& data = work.bins;
    const std::size_t points = work.points;
    const float lowest = 2 * (data.real[0] + data.imaginary[0]);
    const float highest = 2 * (data.real[0] - data.imaginary[0]);
    power[0] = lowest * lowest;
    power[points] = highest * highest;
    // Bin 0 stands alone: the first ones overlap with those behind them.
    for (std::size_t next = 0; next < points; next += kCount) {
        const std::size_t k = std::max<std::size_t>(next, 1);
        const std::size_t mirrored = points - k - (kCount - 1);
        const auto a = LoadPoint<Real>(data, k);
        const Real br = LoadBackwards<Real>(data.real + mirrored, Lanes<Real>()).value;
        const Real bi = LoadBackwards<Real>(data.imaginary + mirrored, Lanes<Real>()).value;
        const auto odd =
            Turned(LoadPoint<Real>(work.turns, k), Complex<Real>{a.imaginary + bi, br - a.real});
        const Real real = (a.real + br) + odd.real, imaginary = (a.imaginary - bi) + odd.imaginary;
        Store<Real>(power + k, real * real + imaginary * imaginary);
    }
}

template <class Real>
[[gnu::always_inline]] inline void ComputeWith(const Work& work, float* power) {
    Transform<Real>(work);
    PutPowers<Real>(work, power);
}

void ComputeByFour(const Work& work, float* power) {
    ComputeWith<Four>(work, power);
}

#ifdef SONAVEL_VECTOR_TARGETS
__attribute__((target("avx2"))) void ComputeByEight(const Work& work, float* power) {
    ComputeWith<Eight>(work, power);
}

__attribute__((target("avx512f"))) void ComputeBySixteen(const Work& work, float* power) {
    ComputeWith<Sixteen>(work, power);
}
#endif

using ComputePowers = void (*)(const Work& work, float* power);

ComputePowers FastestCompute() {
#ifdef SONAVEL_VECTOR_TARGETS
    if (__builtin_cpu_supports("avx512f")) return ComputeBySixteen;
    if (__builtin_cpu_supports("avx2")) return ComputeByEight;
#endif
    return ComputeByFour;
}

double WindowValue(WindowShape shape, double turn) {
    const double angle = 2 * std::numbers::pi * turn;
    if (shape == WindowShape::kHann) return 0.5 - 0.5 * std::cos(angle);
    return 0.35875 - 0.48829 * std::cos(angle) + 0.14128 * std::cos(2 * angle) -
           0.01168 * std::cos(3 * angle);
}

// Of the last blocks, whichever the stages of radix 4 lead to.
std::size_t LastOf(std::size_t points) {
    return (std::bit_width(points) - 1) % 2 == 0 ? 16 : 8;
}

// Keeps the quarters from lying in the same places of a processor's cache.
constexpr std::size_t kGap = 16;

}  // namespace

PowerSpectrum::PowerSpectrum(unsigned windowFrames, WindowShape shape)
    : points_(windowFrames / 2),
      window_(windowFrames),
      turns_(points_),
      factors_(points_),
      quarters_(points_ + 4 * kGap),
      bins_(points_) {
    PutWindow(shape);
    for (std::size_t k = 0; k < points_; ++k) turns_.PutTurn(k, k, windowFrames);
    PutFactors();
    PutBlockBins();
}

void PowerSpectrum::PutWindow(WindowShape shape) {
    const unsigned frames = WindowFrames();
    const auto valueOf = [&](unsigned frame) {
        return WindowValue(shape, double{1} * frame / frames);
    };
    double sum = 0;
    for (unsigned frame = 0; frame < frames; ++frame) sum += valueOf(frame);
    for (unsigned frame = 0; frame < frames; ++frame)
        window_.Data()[frame] = static_cast<float>(valueOf(frame) / sum);
}

void PowerSpectrum::PutFactors() {
    std::size_t at = 0;
    for (std::size_t size = points_; size >= LastOf(points_); size /= 4)
        for (std::size_t leg = 1; leg <= 3; ++leg)
            for (std::size_t p = 0; p < size / 4; ++p)
                factors_.PutTurn(at++, leg * p * (points_ / size), points_);
}

// The digits of a block's number, of base 4, are those of its bins the other way round; the two
// before them number the sixteenths.
void PowerSpectrum::PutBlockBins() {
    const std::size_t blocks = points_ / 16 / LastOf(points_);
    for (std::size_t block = 0; block < blocks; ++block) {
        std::size_t bin = 0, rest = block;
        for (std::size_t digits = blocks; digits > 1; digits /= 4, rest /= 4)
            bin = 4 * bin + rest % 4;
        blockBins_.push_back(static_cast<std::uint16_t>(16 * bin));
    }
}

void PowerSpectrum::Complexes::PutTurn(std::size_t at, std::size_t part, std::size_t parts) {
    const double angle =
        -2 * std::numbers::pi * static_cast<double>(part) / static_cast<double>(parts);
    real.Data()[at] = static_cast<float>(std::cos(angle));
    imaginary.Data()[at] = static_cast<float>(std::sin(angle));
}

void PowerSpectrum::Compute(std::span<const float> frames, std::span<float> power) {
    static const ComputePowers compute = FastestCompute();
    const auto parts = [](Complexes& of) { return Parts{of.real.Data(), of.imaginary.Data()}; };
    compute({.frames = frames.data(),
             .window = window_.Data(),
             .points = points_,
             .factors = {parts(factors_), points_ / 4},
             .turns = parts(turns_),
             .quarters = parts(quarters_),
             .quarterStep = points_ / 4 + kGap,
             .last = LastOf(points_),
             .blockBins = blockBins_.data(),
             .bins = parts(bins_)},
            power.data());
}

}  // namespace sonavel
