#include "sound/share_io.h"

#include <algorithm>
#include <cmath>

#include "sound/sample_io.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

template <class Type>
typename Type::Stored StoredShare(float share) {
    const float value = FloatSample::Finite(share) * static_cast<float>(Type::kHalfScale);
    if constexpr (!kHoldsWholeNumbers<Type>) return Type::StoredOf(value);
    const float held =
        std::clamp(value, static_cast<float>(Type::kLeast), static_cast<float>(Type::kGreatest));
    return Type::StoredOf(static_cast<typename Type::Value>(std::lrint(held)));
}

void ScaleToShares(const Sound& sound, std::span<float> values) {
    const float unit = VisitSampleType(
        sound.GetBits(), [](auto type) { return 1 / static_cast<float>(type.kHalfScale); });
    for (float& value : values) value *= unit;
}

// Every `stride`-th sample from `first` on.
void Write(Sound& sound, std::size_t first, std::size_t stride, std::span<const float> shares) {
    VisitSampleType(sound.GetBits(), [&](auto type) {
        using Type = decltype(type);
        const auto all = SamplesOf<Type>(sound.MutableBytes());
        if (first >= all.size()) return;
        const std::size_t count = std::min(shares.size(), (all.size() - first - 1) / stride + 1);
        auto* out = all.data() + first;
        for (std::size_t i = 0; i < count; ++i) out[i * stride] = StoredShare<Type>(shares[i]);
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
