#include "sound/share_io.h"

#include <algorithm>
#include <bit>

#include "sound/constant_stride.h"
#include "sound/nearest.h"
#include "sound/sample_io.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

// As FloatSample::Finite(), by its bits: a branch would keep the loops from being vectorised.
float FiniteShare(float share) {
    const std::uint32_t kept = 0U - static_cast<std::uint32_t>(share - share == 0);
    return std::bit_cast<float>(std::bit_cast<std::uint32_t>(share) & kept);
}

template <class Type>
typename Type::Stored StoredShare(float share) {
    const float value = FiniteShare(share) * static_cast<float>(Type::kHalfScale);
    if constexpr (!kHoldsWholeNumbers<Type>) return Type::StoredOf(value);
    const float held = std::min(std::max(value, static_cast<float>(Type::kLeast)),
                                static_cast<float>(Type::kGreatest));
    return Type::StoredOf(static_cast<typename Type::Value>(Nearest(held)));
}

void ScaleToShares(const Sound& sound, std::span<float> values) {
    const float unit = VisitSampleType(
        sound.GetBits(), [](auto type) { return 1 / static_cast<float>(type.kHalfScale); });
    for (float& value : values) value *= unit;
}

// Every `stride`-th sample from `first` on.
void Write(Sound& sound, std::size_t first, std::size_t stride, std::span<const float> shares) {
    const float* in = shares.data();
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const auto all = SamplesOf<Type>(sound.MutableBytes());
        if (first >= all.size()) return;
        const std::size_t count = std::min(shares.size(), (all.size() - first - 1) / stride + 1);
        auto* out = all.data() + first;
        WithConstantStride(stride, [&](auto step) {
            for (std::size_t i = 0; i < count; ++i) out[i * step] = StoredShare<Type>(in[i]);
        });
    });
}

}  // namespace

void ReadShares(const Sound& sound, std::uint32_t startFrame, std::span<float> shares) {
    ReadInterleaved(sound, startFrame, shares);
    ScaleToShares(sound, shares);
}

void ReadChannelShares(const Sound& sound, unsigned channel, std::uint32_t startFrame,
                       std::span<float> shares) {
    ReadChannel(sound, channel, startFrame, shares, EightBitReading::kFull);
    ScaleToShares(sound, shares);
}

void WriteShares(Sound& sound, std::uint32_t startFrame, std::span<const float> shares) {
    Write(sound, std::size_t{startFrame} * sound.GetChannels(), 1, shares);
}

void WriteChannelShares(Sound& sound, unsigned channel, std::uint32_t startFrame,
                        std::span<const float> shares) {
    const std::size_t channels = sound.GetChannels();
    Write(sound, startFrame * channels + channel, channels, shares);
}

}  // namespace sonavel
