// The preview sound of a document.
#include <algorithm>
#include <cstdint>

#include "document/sound_doc.h"
#include "platform/failure_texts.h"
#include "sound/sample_types.h"

namespace sonavel {
namespace {

// Truncated toward zero; what is no number is silence, and so is what is out of all range.
std::int32_t Whole(float value) {
    return value > -2e9f && value < 2e9f ? static_cast<std::int32_t>(value) : 0;
}

template <class Type>
typename Type::Stored StoredOf(float value) {
    if constexpr (kHoldsWholeNumbers<Type>)
        return Type::StoredOf(Whole(value));
    else
        return Type::StoredOf(value);
}

// What lies beyond the bits of whole numbers wraps.
template <class Type>
void Store(std::span<const float> samples, std::span<typename Type::Stored> stored) {
    const std::size_t count = std::min(samples.size(), stored.size());
    std::transform(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count),
                   stored.begin(), StoredOf<Type>);
    std::fill(stored.begin() + static_cast<std::ptrdiff_t>(count), stored.end(), Type::StoredOf(0));
}

}  // namespace

Outcome CSoundDoc::MakePreview(std::span<const float> samples, PreviewPlay play,
                               std::uint64_t lengthBytes, PreviewFormat format) {
    const bool stereo = format == PreviewFormat::kComputedStereo;
    const unsigned channels = stereo ? 2 : sound_.GetChannels();
    const unsigned bits = stereo ? ComputedBits(sound_.GetBits()) : sound_.GetBits();
    if (channels == 0) return Failed("There is no sound.");
    const std::uint64_t frames = lengthBytes ? lengthBytes / channels : sound_.GetFrameCount();
    preview_.Stop(CWavePlayer::StopReport::kSilent);
    if (!preview_.Create(channels, bits, sound_.GetSamplesPerSecond(), frames))
        return Failed(failure::kMemory);
    VisitSampleType(bits, [&](auto type) {
        Store<decltype(type)>(samples, SamplesOf<decltype(type)>(preview_.MutableBytes()));
    });
    if (play == PreviewPlay::kYes) preview_.Play(0);
    return Done();
}

void CSoundDoc::ClearPreview() {
    preview_.Stop(CWavePlayer::StopReport::kSilent);
    preview_.Create(2, 16, sound_.GetSamplesPerSecond(), 0);
}

}  // namespace sonavel
