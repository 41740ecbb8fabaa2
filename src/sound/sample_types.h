// The types of samples that a sound may hold. This is the one place that knows them: a loop over
// samples is a template that VisitSampleType() runs for the sound's own type.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

namespace sonavel {

static_assert(std::endian::native == std::endian::little,
              "samples lie little-endian in memory and are used in place");

// Each type says how a sample is stored and what value it stands for.
//   Stored, Value            in memory, and in calculations
//   kBits                    of PcmFormat::bitsPerSample
//   kSilenceByte             of which silence is made
//   kFullScale               the span of the values, as level rulers and meters measure it
//   kLeast, kGreatest        value
//   ValueOf(stored)          never fails
//   Truncated(value)         what is stored for a value, wrapped around in the type's bits

// 8 bits: a byte that counts down from the greatest value, 128, to the least, -127.
struct ByteSample {
    using Stored = std::uint8_t;
    using Value = std::int32_t;
    static constexpr unsigned kBits = 8;
    static constexpr int kSilenceByte = 128;
    static constexpr std::int64_t kFullScale = 0x100;
    static constexpr Value kLeast = -127;
    static constexpr Value kGreatest = 128;

    static constexpr Value ValueOf(Stored stored) { return 128 - stored; }
    static constexpr Stored Truncated(Value value) {
        return static_cast<Stored>(128u - static_cast<std::uint32_t>(value));
    }
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

    static constexpr Value ValueOf(Stored stored) { return stored; }
    static constexpr Stored Truncated(Value value) { return static_cast<Stored>(value); }
};

// Whether samples of that many bits are one of the types.
constexpr bool IsSampleWidth(unsigned bits) {
    return bits == ByteSample::kBits || bits == WordSample::kBits;
}

// Calls `visit` with the type of that many bits, 16 for any other number, and returns what it
// returns.
template <class Visit>
constexpr decltype(auto) VisitSampleType(unsigned bits, Visit&& visit) {
    if (bits == ByteSample::kBits) return visit(ByteSample{});
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

// What samples of that many bits can be.
struct SampleLimits {
    std::int32_t least;
    std::int32_t greatest;
};
constexpr SampleLimits LimitsOfSamples(unsigned bits) {
    return VisitSampleType(bits, [](auto type) {
        return SampleLimits{type.kLeast, type.kGreatest};
    });
}

// The span of the values of a width, 256 or 65536.
constexpr std::int64_t FullScaleOf(unsigned bits) {
    return VisitSampleType(bits, [](auto type) { return type.kFullScale; });
}

// Fills a part of a sound's data with silence.
inline void FillWithSilence(std::span<std::uint8_t> bytes, unsigned bits) {
    const int silence = VisitSampleType(bits, [](auto type) { return type.kSilenceByte; });
    if (!bytes.empty()) std::memset(bytes.data(), silence, bytes.size());
}

}  // namespace sonavel
