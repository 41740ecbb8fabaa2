#include "exchange/sample_packing.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace sonavel {
namespace {

// The three kinds of samples that come, as numbers of so many bits or as floats.
struct Eight {
    using Stored = std::uint8_t;
    static constexpr int kBits = 8;
    static std::int32_t Number(Stored stored) { return stored - 128; }
};
struct Sixteen {
    using Stored = std::int16_t;
    static constexpr int kBits = 16;
    static std::int32_t Number(Stored stored) { return stored; }
};
struct Float {
    using Stored = float;
    static constexpr int kBits = 0;
};

template <int kBits>
constexpr std::int32_t kGreatest = (1 << (kBits - 1)) - 1;

template <int kBits>
std::int32_t IntegerOf(float value) {
    constexpr auto kScale = static_cast<float>(1 << (kBits - 1));
    if (std::isnan(value)) return 0;
    // Compared as floats first: a conversion out of range is undefined.
    const float scaled = value * kScale;
    if (scaled >= kScale) return kGreatest<kBits>;
    if (scaled <= -kScale) return -kGreatest<kBits> - 1;
    return std::min(static_cast<std::int32_t>(std::lrint(scaled)), kGreatest<kBits>);
}

template <class From, int kBits>
std::int32_t IntegerOf(typename From::Stored stored) {
    if constexpr (From::kBits == 0) {
        return IntegerOf<kBits>(stored);
    } else if constexpr (From::kBits <= kBits) {
        return From::Number(stored) * (1 << (kBits - From::kBits));
    } else {
        constexpr int kShift = From::kBits - kBits;
        const std::int32_t rounded = (From::Number(stored) + (1 << (kShift - 1))) >> kShift;
        return std::min(rounded, kGreatest<kBits>);
    }
}

template <class From>
float FloatOf(typename From::Stored stored) {
    if constexpr (From::kBits == 0)
        return stored;
    else
        return static_cast<float>(From::Number(stored)) /
               static_cast<float>(1 << (From::kBits - 1));
}

template <std::size_t kBytes>
void Store(std::uint32_t value, ByteOrder order, std::uint8_t* to) {
    for (std::size_t i = 0; i < kBytes; ++i) {
        const std::size_t place = order == ByteOrder::kBig ? kBytes - 1 - i : i;
        to[place] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

// Calls with each sample, and where its bytes go.
template <class From, std::size_t kBytes, class Each>
void ForEach(std::span<const std::uint8_t> from, std::span<std::uint8_t> to, Each each) {
    constexpr std::size_t kStored = sizeof(typename From::Stored);
    const std::size_t count = std::min(from.size() / kStored, to.size() / kBytes);
    for (std::size_t i = 0; i < count; ++i) {
        typename From::Stored stored;
        std::memcpy(&stored, &from[i * kStored], kStored);
        each(stored, &to[i * kBytes]);
    }
}

template <class From, int kBits>
void PackIntegers(std::span<const std::uint8_t> from, const FileSamples& as,
                  std::span<std::uint8_t> to) {
    constexpr std::size_t kBytes = kBits / 8;
    const std::int32_t zero = kBits == 8 && as.zero == EightBitZero::kAt128 ? 128 : 0;
    ForEach<From, kBytes>(from, to, [&](typename From::Stored stored, std::uint8_t* at) {
        const std::int32_t value = IntegerOf<From, kBits>(stored) + zero;
        Store<kBytes>(static_cast<std::uint32_t>(value), as.order, at);
    });
}

template <class From>
void Pack(std::span<const std::uint8_t> from, const FileSamples& as, std::span<std::uint8_t> to) {
    switch (as.depth) {
        case EncodedDepth::k8:
            return PackIntegers<From, 8>(from, as, to);
        case EncodedDepth::k16:
            return PackIntegers<From, 16>(from, as, to);
        case EncodedDepth::k24:
            return PackIntegers<From, 24>(from, as, to);
        case EncodedDepth::kFloat32:
            break;
    }
    ForEach<From, 4>(from, to, [&](typename From::Stored stored, std::uint8_t* at) {
        Store<4>(std::bit_cast<std::uint32_t>(FloatOf<From>(stored)), as.order, at);
    });
}

}  // namespace

std::size_t FileSamples::Bytes() const {
    switch (depth) {
        case EncodedDepth::k8:
            return 1;
        case EncodedDepth::k16:
            return 2;
        case EncodedDepth::k24:
            return 3;
        case EncodedDepth::kFloat32:
            break;
    }
    return 4;
}

void PackSamples(std::span<const std::uint8_t> from, FrameSamples samples, const FileSamples& as,
                 std::span<std::uint8_t> to) {
    switch (samples) {
        case FrameSamples::kUnsigned8:
            return Pack<Eight>(from, as, to);
        case FrameSamples::kSigned16:
            return Pack<Sixteen>(from, as, to);
        case FrameSamples::kFloat32:
            return Pack<Float>(from, as, to);
    }
}

}  // namespace sonavel
