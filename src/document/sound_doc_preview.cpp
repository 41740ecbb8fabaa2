// The preview sound of a document.
#include <algorithm>
#include <cstdint>

#include "document/sound_doc.h"
#include "sound/failure_texts.h"
#include "sound/typed_samples.h"

namespace sonavel {
namespace {

// Truncated toward zero to 16 bits; what lies beyond them wraps, what is no number is silence.
std::int16_t Truncated(float value) {
    if (!(value > -2e9f && value < 2e9f)) return 0;
    return static_cast<std::int16_t>(static_cast<std::int32_t>(value));
}

void Store(std::span<const float> samples, std::span<std::int16_t> words) {
    const std::size_t count = std::min(samples.size(), words.size());
    std::transform(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count),
                   words.begin(), Truncated);
    std::fill(words.begin() + static_cast<std::ptrdiff_t>(count), words.end(), std::int16_t{0});
}

void Store(std::span<const float> samples, std::span<std::uint8_t> bytes) {
    const std::size_t count = std::min(samples.size(), bytes.size());
    std::transform(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count),
                   bytes.begin(),
                   [](float value) { return static_cast<std::uint8_t>(128 - Truncated(value)); });
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(count), bytes.end(), std::uint8_t{128});
}

}  // namespace

bool CSoundDoc::MakePreview(std::span<const float> samples, PreviewPlay play,
                            std::uint32_t lengthBytes, PreviewFormat format) {
    const bool stereo16 = format == PreviewFormat::kStereo16;
    const unsigned channels = stereo16 ? 2 : sound_.GetChannels();
    const unsigned bits = stereo16 ? 16 : sound_.GetBits();
    if (channels == 0) return Refuse("There is no sound.");
    const std::uint32_t frames = lengthBytes ? lengthBytes / channels : sound_.GetFrameCount();
    preview_.Stop(CWavePlayer::StopReport::kSilent);
    if (!preview_.Create(channels, bits, sound_.GetSamplesPerSecond(), frames))
        return Fail(failure::kMemory);
    if (bits == 16)
        Store(samples, Words(preview_.MutableBytes()));
    else
        Store(samples, preview_.MutableBytes());
    return play == PreviewPlay::kNo || preview_.Play(0);
}

void CSoundDoc::ClearPreview() {
    preview_.Stop(CWavePlayer::StopReport::kSilent);
    preview_.Create(2, 16, sound_.GetSamplesPerSecond(), 0);
}

}  // namespace sonavel
