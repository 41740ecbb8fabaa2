// The types of samples that a sound may hold. This is the one place that knows them: a loop over
// samples is a template that VisitSampleType() runs for the sound's own type.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>

namespace sonavel {

static_assert(std::endian::native == std::endian::little,
              "samples lie little-endian in memory and are used in place");

// Each type says how a sample is stored and what value it stands for.
//   Stored, Value            in memory, and in calculations
//   kBits                    of PcmFormat::bitsPerSample
//   kSilenceByte             of which silence is made
//   kLeast, kGreatest        value of full scale
//   kHalfScale               the value that is the share 1 of full scale
//   ValueOf(stored)          never fails
//   StoredOf(value)          what is stored for a value: integers wrap around in the type's bits,
//                            floats keep what lies beyond full scale
//   LevelOf(stored)          the value as a whole number, in finer steps where values are no whole
//                            numbers: what is drawn, measured and shown by meters
//   kFullScale               the span of the levels

// 8 bits: a byte that counts down from the greatest value, 128, to the least, -127.
struct ByteSample {
    using Stored = std::uint8_t;
    using Value = std::int32_t;
    static constexpr unsigned kBits = 8;
    static constexpr int kSilenceByte = 128;
    static constexpr std::int64_t kFullScale = 0x100;
    static constexpr Value kLeast = -127;
    static constexpr Value kGreatest = 128;
    static constexpr Value kHalfScale = 128;

    static constexpr Value ValueOf(Stored stored) { return 128 - stored; }
    static constexpr Stored StoredOf(Value value) {
        return static_cast<Stored>(128u - static_cast<std::uint32_t>(value));
    }
    static constexpr std::int32_t LevelOf(Stored stored) { return ValueOf(stored); }
};

// 16 bits: the value itself.
struct WordSample {
    using Stored = std::int16_t;
    using Value = std::int32_t;
    static constexpr unsigned kBits = 16;
    static constexpr int kSilenceByte = 0;
    static constexpr std::int64_t kFullScale = 0x10000;
    static constexpr Value kLeast = -32768;
    static constexpr Value kGreatest = 32767;
    static constexpr Value kHalfScale = 32768;

    static constexpr Value ValueOf(Stored stored) { return stored; }
    static constexpr Stored StoredOf(Value value) { return static_cast<Stored>(value); }
    static constexpr std::int32_t LevelOf(Stored stored) { return ValueOf(stored); }
};

// 32 bits: a float of the nominal range +-1, always finite. Its value counts in units of 16 bits,
// so that the formulas of 16-bit sounds hold; the factor is a power of 2, which loses nothing.
struct FloatSample {
    using Stored = float;
    using Value = float;
    static constexpr unsigned kBits = 32;
    static constexpr int kSilenceByte = 0;
    static constexpr std::int64_t kFullScale = 0x1000000;
    static constexpr Value kLeast = -32768;
    static constexpr Value kGreatest = 32768;
    static constexpr Value kHalfScale = 32768;

    static constexpr Value ValueOf(Stored stored) { return stored * kHalfScale; }
    static constexpr Stored StoredOf(Value value) { return Finite(value * (1 / kHalfScale)); }
    // What is not a number or infinite becomes 0.
    static constexpr Stored Finite(float value) {
        constexpr float kMost = std::numeric_limits<float>::max();
        return value >= -kMost && value <= kMost ? value : 0;
    }
    static constexpr std::int32_t LevelOf(Stored stored) {
        // The greatest float below 2^31: levels can be negated.
        constexpr float kMost = 2147483520.0f;
        constexpr float kHalfLevel = 0x800000;  // of kFullScale
        return static_cast<std::int32_t>(std::clamp(Finite(stored) * kHalfLevel, -kMost, kMost));
    }
};

// Whether the type's samples are whole numbers, which rounding makes.
template <class Type>
inline constexpr bool kHoldsWholeNumbers = std::is_integral_v<typename Type::Stored>;

// Whether samples of that many bits are one of the types.
constexpr bool IsSampleWidth(unsigned bits) {
    return bits == ByteSample::kBits || bits == WordSample::kBits || bits == FloatSample::kBits;
}

// Calls `visit` with the type of that many bits, 16 for any other number, and returns what it
// returns.
template <class Visit>
constexpr decltype(auto) VisitSampleType(unsigned bits, Visit&& visit) {
    if (bits == ByteSample::kBits) return visit(ByteSample{});
    if (bits == FloatSample::kBits) return visit(FloatSample{});
    return visit(WordSample{});
}

// The whole samples of a sound's data; what is cut at its end is left out. The block must be
// aligned for them, as every SoundBuffer is.
template <class Type>
std::span<typename Type::Stored> SamplesOf(std::span<std::uint8_t> bytes) {
    using Stored = typename Type::Stored;
    return {reinterpret_cast<Stored*>(bytes.data()), bytes.size() / sizeof(Stored)};
}
template <class Type>
std::span<const typename Type::Stored> SamplesOf(std::span<const std::uint8_t> bytes) {
    using Stored = typename Type::Stored;
    return {reinterpret_cast<const Stored*>(bytes.data()), bytes.size() / sizeof(Stored)};
}

// Bytes of one sample.
constexpr unsigned SampleBytesOf(unsigned bits) {
    return VisitSampleType(bits, [](auto type) {
        return static_cast<unsigned>(sizeof(typename decltype(type)::Stored));
    });
}

// Whether samples of that many bits are whole numbers.
constexpr bool AreWholeNumbers(unsigned bits) {
    return VisitSampleType(bits, [](auto type) { return kHoldsWholeNumbers<decltype(type)>; });
}

// The values of full scale of samples of that many bits.
struct SampleLimits {
    std::int32_t least;
    std::int32_t greatest;
};
constexpr SampleLimits LimitsOfSamples(unsigned bits) {
    return VisitSampleType(bits, [](auto type) {
        return SampleLimits{static_cast<std::int32_t>(type.kLeast),
                            static_cast<std::int32_t>(type.kGreatest)};
    });
}

// The levels of full scale.
constexpr SampleLimits LevelLimitsOf(unsigned bits) {
    return VisitSampleType(bits, [](auto type) {
        return SampleLimits{type.LevelOf(type.StoredOf(type.kLeast)),
                            type.LevelOf(type.StoredOf(type.kGreatest))};
    });
}

// The bits of what is computed as a whole from samples of that many bits, as a placing in space is:
// floats stay floats, all else becomes 16 bits.
constexpr unsigned ComputedBits(unsigned bits) {
    return AreWholeNumbers(bits) ? WordSample::kBits : bits;
}

// The span of the levels of a width: 256, 65536 or 2^24.
constexpr std::int64_t FullScaleOf(unsigned bits) {
    return VisitSampleType(bits, [](auto type) { return type.kFullScale; });
}

// Fills a part of a sound's data with silence.
inline void FillWithSilence(std::span<std::uint8_t> bytes, unsigned bits) {
    const int silence = VisitSampleType(bits, [](auto type) { return type.kSilenceByte; });
    if (!bytes.empty()) std::memset(bytes.data(), silence, bytes.size());
}

// Of floats as other programs left them: what is not a number or infinite becomes 0.
inline void MakeFinite(std::span<std::uint8_t> floats) {
    for (float& sample : SamplesOf<FloatSample>(floats)) sample = FloatSample::Finite(sample);
}

}  // namespace sonavel
