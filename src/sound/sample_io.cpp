#include "sound/sample_io.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "platform/vector_clones.h"
#include "sound/constant_stride.h"

namespace sonavel {
namespace {

// Every `stride`-th sample from `first` on.
struct SampleRun {
    std::size_t first;
    std::size_t stride;
    std::size_t count;
};

SampleRun ChannelRun(const Sound& sound, unsigned channel, std::uint32_t startFrame,
                     std::size_t wanted) {
    const std::size_t channels = sound.GetChannels();
    const std::uint32_t frames = sound.GetFrameCount();
    const std::size_t inside = startFrame < frames ? frames - startFrame : 0;
    return {startFrame * channels + channel, channels, std::min(wanted, inside)};
}

SampleRun InterleavedRun(const Sound& sound, std::uint32_t startFrame, std::size_t wanted) {
    const SampleRun frames = ChannelRun(sound, 0, startFrame, wanted / sound.GetChannels());
    return {frames.first, 1, frames.count * frames.stride};
}

// What a stored sample is read as. The choice for byte 0 comes as a number, so that the loop has no
// branch.
template <class Type>
float ValueRead(typename Type::Stored stored, int valueOfByte0) {
    if constexpr (std::is_same_v<Type, ByteSample>)
        return static_cast<float>(stored ? Type::ValueOf(stored) : valueOfByte0);
    else
        return static_cast<float>(Type::ValueOf(stored));
}

SONAVEL_VECTOR_CLONES
void Read(const Sound& sound, SampleRun run, std::span<float> out, int valueOfByte0) {
    float* to = out.data();
    VisitSampleType(sound.GetBits(), [&](auto type) {
        const auto* in = SamplesOf<decltype(type)>(sound.Bytes()).data() + run.first;
        WithConstantStride(run.stride, [&](auto stride) {
            for (std::size_t i = 0; i < run.count; ++i)
                to[i] = ValueRead<decltype(type)>(in[i * stride], valueOfByte0);
        });
    });
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(run.count), out.end(), 0.0f);
}

int ValueOfByte0(EightBitReading reading) {
    const bool wraps = reading == EightBitReading::kSignedByte;
    return wraps ? -ByteSample::kGreatest : ByteSample::kGreatest;
}

// A frame of two words is taken as one number: its halves come apart without changing places.
[[gnu::always_inline]] inline void ReadWordPairs(const WordSample::Stored* in, std::size_t count,
                                                 float* left, float* right) {
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t frame = 0;
        std::memcpy(&frame, in + 2 * i, sizeof frame);
        left[i] = static_cast<float>(static_cast<std::int32_t>(frame << 16) >> 16);
        right[i] = static_cast<float>(static_cast<std::int32_t>(frame) >> 16);
    }
}

SONAVEL_VECTOR_CLONES
void ReadPairs(const Sound& sound, SampleRun run, float* left, float* right, int valueOfByte0) {
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const auto* in = SamplesOf<Type>(sound.Bytes()).data() + run.first;
        if constexpr (std::is_same_v<Type, WordSample>)
            return ReadWordPairs(in, run.count, left, right);
        for (std::size_t i = 0; i < run.count; ++i) {
            left[i] = ValueRead<Type>(in[2 * i], valueOfByte0);
            right[i] = ValueRead<Type>(in[2 * i + 1], valueOfByte0);
        }
    });
}

SONAVEL_VECTOR_CLONES
void WritePairs(Sound& sound, SampleRun run, const float* left, const float* right) {
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        using Value = typename Type::Value;
        auto* out = SamplesOf<Type>(sound.MutableBytes()).data() + run.first;
        for (std::size_t i = 0; i < run.count; ++i) {
            out[2 * i] = Type::StoredOf(static_cast<Value>(left[i]));
            out[2 * i + 1] = Type::StoredOf(static_cast<Value>(right[i]));
        }
    });
}

SONAVEL_VECTOR_CLONES
void Write(Sound& sound, SampleRun run, std::span<const float> values) {
    const float* in = values.data();
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        auto* out = SamplesOf<Type>(sound.MutableBytes()).data() + run.first;
        WithConstantStride(run.stride, [&](auto stride) {
            for (std::size_t i = 0; i < run.count; ++i)
                out[i * stride] = Type::StoredOf(static_cast<typename Type::Value>(in[i]));
        });
    });
}

}  // namespace

SONAVEL_VECTOR_CLONES
void HoldWithinLimits(std::span<float> values, unsigned bits) {
    const SampleLimits limits = LimitsOfSamples(bits);
    const auto least = static_cast<float>(limits.least);
    const auto greatest = static_cast<float>(limits.greatest);
    for (float& value : values) value = std::min(std::max(value, least), greatest);
}

void ReadChannel(const Sound& sound, unsigned channel, std::uint32_t startFrame,
                 std::span<float> out, EightBitReading reading) {
    Read(sound, ChannelRun(sound, channel, startFrame, out.size()), out, ValueOfByte0(reading));
}

void ReadBothChannels(const Sound& sound, std::uint32_t startFrame, std::span<float> left,
                      std::span<float> right, EightBitReading reading) {
    const SampleRun run = ChannelRun(sound, 0, startFrame, left.size());
    ReadPairs(sound, run, left.data(), right.data(), ValueOfByte0(reading));
    std::ranges::fill(left.subspan(run.count), 0.0f);
    std::ranges::fill(right.subspan(run.count), 0.0f);
}

void ReadInterleaved(const Sound& sound, std::uint32_t startFrame, std::span<float> out) {
    Read(sound, InterleavedRun(sound, startFrame, out.size()), out, ByteSample::kGreatest);
}

void WriteTruncated(Sound& sound, unsigned channel, std::uint32_t startFrame,
                    std::span<const float> values) {
    Write(sound, ChannelRun(sound, channel, startFrame, values.size()), values);
}

void WriteBothTruncated(Sound& sound, std::uint32_t startFrame, std::span<const float> left,
                        std::span<const float> right) {
    WritePairs(sound, ChannelRun(sound, 0, startFrame, left.size()), left.data(), right.data());
}

void WriteInterleaved(Sound& sound, std::uint32_t startFrame, std::span<const float> values) {
    Write(sound, InterleavedRun(sound, startFrame, values.size()), values);
}

}  // namespace sonavel
