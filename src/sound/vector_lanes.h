// Floats side by side, by 4, 8 or 16, for loops that the compiler leaves alone: they are read and
// stored anywhere, and change places in the ways that a transform needs. All is inlined, so that a
// function that is written for some processors alone has it made for them.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

namespace sonavel {

typedef float Four __attribute__((vector_size(16)));
typedef float Eight __attribute__((vector_size(32)));
typedef float Sixteen __attribute__((vector_size(64)));

template <class Real>
inline constexpr std::size_t kLanes = sizeof(Real) / sizeof(float);
template <class Real>
using Lanes = std::make_index_sequence<kLanes<Real>>;

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

// Of both one behind the other, the lanes from `first` on, leaving out every other one.
template <std::size_t first, class Real, std::size_t... i>
[[gnu::always_inline]] inline Loaded<Real> EverySecond(const Real& a, const Real& b,
                                                       std::index_sequence<i...>) {
    return {__builtin_shufflevector(a, b, (2 * i + first)...)};
}

template <class Real, std::size_t... i>
[[gnu::always_inline]] inline Loaded<Real> LoadBackwards(const float* from,
                                                         std::index_sequence<i...>) {
    const Real value = Load<Real>(from).value;
    return {__builtin_shufflevector(value, value, (sizeof...(i) - 1 - i)...)};
}

template <class Real, class Half, std::size_t... i>
[[gnu::always_inline]] inline Loaded<Real> OneBehindTheOther(const Half& a, const Half& b,
                                                             std::index_sequence<i...>) {
    return {__builtin_shufflevector(a, b, i...)};
}

// Four neighbours of every fourth block from the first on, side by side.
template <class Real>
[[gnu::always_inline]] inline Loaded<Real> LoadFours(const float* const* blocks, std::size_t at) {
    if constexpr (kLanes<Real> == 4) {
        return Load<Real>(*blocks + at);
    } else {
        using Half = std::conditional_t<kLanes<Real> == 8, Four, Eight>;
        const Half low = LoadFours<Half>(blocks, at).value;
        const Half high = LoadFours<Half>(blocks + kLanes<Half>, at).value;
        return OneBehindTheOther<Real>(low, high, Lanes<Real>());
    }
}

// In every four lanes, two of each from lane `first` of the four on: in turns.
template <std::size_t first, class Real, std::size_t... i>
[[gnu::always_inline]] inline Loaded<Real> InTurns(const Real& a, const Real& b,
                                                   std::index_sequence<i...>) {
    return {
        __builtin_shufflevector(a, b, (i / 4 * 4 + i % 4 / 2 + i % 2 * kLanes<Real> + first)...)};
}

// Likewise, but one's two behind the other's.
template <std::size_t first, class Real, std::size_t... i>
[[gnu::always_inline]] inline Loaded<Real> InPairs(const Real& a, const Real& b,
                                                   std::index_sequence<i...>) {
    return {
        __builtin_shufflevector(a, b, (i / 4 * 4 + i % 2 + i % 4 / 2 * kLanes<Real> + first)...)};
}

// Four neighbours, from `at` on, of as many blocks as there are lanes: a vector for each neighbour,
// a lane for each block.
template <class Real>
[[gnu::always_inline]] inline void LoadAcross(const float* const* blocks, std::size_t at,
                                              Real* out) {
    constexpr Lanes<Real> kAll;
    const Real a = LoadFours<Real>(blocks, at).value, b = LoadFours<Real>(blocks + 1, at).value;
    const Real c = LoadFours<Real>(blocks + 2, at).value, d = LoadFours<Real>(blocks + 3, at).value;
    const Real lowAB = InTurns<0>(a, b, kAll).value, highAB = InTurns<2>(a, b, kAll).value;
    const Real lowCD = InTurns<0>(c, d, kAll).value, highCD = InTurns<2>(c, d, kAll).value;
    out[0] = InPairs<0>(lowAB, lowCD, kAll).value;
    out[1] = InPairs<2>(lowAB, lowCD, kAll).value;
    out[2] = InPairs<0>(highAB, highCD, kAll).value;
    out[3] = InPairs<2>(highAB, highCD, kAll).value;
}

}  // namespace sonavel
