#include "sound/sample_io.h"

#include <algorithm>
#include <type_traits>

#include "platform/vector_clones.h"

namespace sonavel {
namespace {

// Every `stride`-th sample from `first` on.
struct SampleRun {
    std::size_t first;
    std::size_t stride;
    std::size_t count;
};

SampleRun ChannelRun(const CWave& sound, unsigned channel, std::uint32_t startFrame,
                     std::size_t wanted) {
    const std::size_t channels = sound.GetChannels();
    const std::uint32_t frames = sound.GetFrameCount();
    const std::size_t inside = startFrame < frames ? frames - startFrame : 0;
    return {startFrame * channels + channel, channels, std::min(wanted, inside)};
}

SampleRun InterleavedRun(const CWave& sound, std::uint32_t startFrame, std::size_t wanted) {
    const SampleRun frames = ChannelRun(sound, 0, startFrame, wanted / sound.GetChannels());
    return {frames.first, 1, frames.count * frames.stride};
}

// The stride becomes a constant for the loop, which is what lets it vectorise.
template <class Loop>
void WithConstantStride(std::size_t stride, const Loop& loop) {
    if (stride == 1)
        loop(std::integral_constant<std::size_t, 1>{});
    else
        loop(std::integral_constant<std::size_t, 2>{});
}

SONAVEL_VECTOR_CLONES
void Read(const CWave& sound, SampleRun run, std::span<float> out, int valueOfByte0) {
    float* to = out.data();
    const std::uint8_t* bytes = sound.Bytes().data();
    WithConstantStride(run.stride, [&](auto stride) {
        if (sound.GetBits() == 16) {
            const auto* in = reinterpret_cast<const std::int16_t*>(bytes) + run.first;
            for (std::size_t i = 0; i < run.count; ++i) to[i] = in[i * stride];
        } else {
            const std::uint8_t* in = bytes + run.first;
            for (std::size_t i = 0; i < run.count; ++i) {
                const int byte = in[i * stride];
                to[i] = static_cast<float>(byte ? 128 - byte : valueOfByte0);
            }
        }
    });
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(run.count), out.end(), 0.0f);
}

std::int32_t Truncate(float value) {
    return static_cast<std::int32_t>(value);
}

SONAVEL_VECTOR_CLONES
void Write(CWave& sound, SampleRun run, std::span<const float> values) {
    const float* in = values.data();
    std::uint8_t* bytes = sound.MutableBytes().data();
    WithConstantStride(run.stride, [&](auto stride) {
        if (sound.GetBits() == 16) {
            auto* out = reinterpret_cast<std::int16_t*>(bytes) + run.first;
            for (std::size_t i = 0; i < run.count; ++i)
                out[i * stride] = static_cast<std::int16_t>(Truncate(in[i]));
        } else {
            std::uint8_t* out = bytes + run.first;
            for (std::size_t i = 0; i < run.count; ++i)
                out[i * stride] = static_cast<std::uint8_t>(128 - Truncate(in[i]));
        }
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

void ReadChannel(const CWave& sound, unsigned channel, std::uint32_t startFrame,
                 std::span<float> out, EightBitReading reading) {
    const int valueOfByte0 = reading == EightBitReading::kSignedByte ? -128 : 128;
    Read(sound, ChannelRun(sound, channel, startFrame, out.size()), out, valueOfByte0);
}

void ReadInterleaved(const CWave& sound, std::uint32_t startFrame, std::span<float> out) {
    Read(sound, InterleavedRun(sound, startFrame, out.size()), out, 128);
}

void WriteTruncated(CWave& sound, unsigned channel, std::uint32_t startFrame,
                    std::span<const float> values) {
    Write(sound, ChannelRun(sound, channel, startFrame, values.size()), values);
}

void WriteInterleaved(CWave& sound, std::uint32_t startFrame, std::span<const float> values) {
    Write(sound, InterleavedRun(sound, startFrame, values.size()), values);
}

}  // namespace sonavel
