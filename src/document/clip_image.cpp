#include "document/clip_image.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include "document/step_words.h"
#include "sound/byte_order.h"
#include "sound/sample_types.h"
#include "sound/wav_format.h"

namespace sonavel {
namespace {

bool HasTag(std::span<const std::uint8_t> image, std::size_t offset, std::string_view tag) {
    const auto sameLetter = [](char expected, std::uint8_t found) {
        const bool lower = found >= 'a' && found <= 'z';
        const bool expectedLower = expected >= 'a' && expected <= 'z';
        return (lower ? found - 'a' + 'A' : found) ==
               (expectedLower ? expected - 'a' + 'A' : expected);
    };
    return std::equal(tag.begin(), tag.end(), image.begin() + static_cast<std::ptrdiff_t>(offset),
                      sameLetter);
}

PcmFormat FormatIn(std::span<const std::uint8_t> image) {
    PcmFormat format;
    format.formatTag = LoadLittle16(&image[20]);
    format.channels = LoadLittle16(&image[22]);
    format.samplesPerSecond = LoadLittle32(&image[24]);
    format.averageBytesPerSecond = LoadLittle32(&image[28]);
    format.blockAlign = LoadLittle16(&image[32]);
    format.bitsPerSample = LoadLittle16(&image[34]);
    return format;
}

// Where the samples begin, 0 when the size of the format chunk is neither of the two known ones.
std::size_t SamplesOffset(std::span<const std::uint8_t> image) {
    switch (LoadLittle32(&image[16])) {
        case 16:
            return kWavHeaderBytes;
        case 18:
            return kWavHeaderBytes + 2;
        default:
            return 0;
    }
}

}  // namespace

std::optional<std::vector<std::uint8_t>> WriteClipImage(const PcmFormat& format,
                                                        std::span<const std::uint8_t> samples) try {
    if (samples.size() > std::numeric_limits<std::uint32_t>::max() - kWavHeaderBytes)
        return std::nullopt;
    std::vector<std::uint8_t> image =
        BuildWavHeader(format, static_cast<std::uint32_t>(samples.size()), 0);
    image.reserve(image.size() + samples.size());
    image.insert(image.end(), samples.begin(), samples.end());
    return image;
} catch (const std::bad_alloc&) {
    return std::nullopt;
}

bool ReadClipImage(std::span<const std::uint8_t> image, ClipRecord& clip) {
    if (image.size() < kWavHeaderBytes) return false;
    if (!HasTag(image, 0, "RIFF") || !HasTag(image, 8, "WAVE") || !HasTag(image, 12, "fmt "))
        return false;
    const PcmFormat format = FormatIn(image);
    const std::size_t offset = SamplesOffset(image);
    if (offset == 0 || !IsEditable(format)) return false;

    // Read at 40 also behind the longer format chunk, whose samples begin two bytes later: writers
    // of such images rely on it.
    const std::uint32_t announced = LoadLittle32(&image[40]);
    if (announced == 0 || announced > MostSoundBytes(format)) return true;
    if (image.size() < offset + announced) return false;
    const std::size_t bytes = announced - announced % format.blockAlign;
    SoundBuffer samples;
    if (!samples.AllocBuffer(bytes)) return false;
    if (bytes) std::memcpy(samples.Data(), &image[offset], bytes);
    if (!AreWholeNumbers(format.bitsPerSample)) MakeFinite(samples.Bytes());
    static_cast<Sound&>(clip) = {
        MakeSoundFormat(format.channels, format.bitsPerSample, format.samplesPerSecond),
        std::move(samples)};
    clip.present = true;
    return true;
}

std::optional<std::vector<std::uint8_t>> ImageOf16Bits(std::span<const std::uint8_t> image) {
    ClipRecord clip;
    if (!ReadClipImage(image, clip) || !clip.present || !clip.ConvertBits(WordSample::kBits))
        return std::nullopt;
    return WriteClipImage(clip.GetFormat(), clip.Bytes());
}

std::uint64_t MarkOfClip(const WaveClipboard& clipboard, std::span<const std::uint8_t> samples) {
    constexpr std::size_t kSmallBytes = std::size_t{16} << 20;
    if (samples.size() <= kSmallBytes) return MarkOf(samples);
    const std::uint64_t number[] = {clipboard.OwnNumber(), samples.size()};
    if (number[0] == 0) return 0;
    return MarkOf({reinterpret_cast<const std::uint8_t*>(number), sizeof number});
}

bool ReadClipboard(const WaveClipboard& clipboard, ClipRecord& clip) {
    if (!clipboard.OffersWave()) return false;
    const std::optional<std::vector<std::uint8_t>> image = clipboard.GetImage();
    return image && ReadClipImage(*image, clip);
}

}  // namespace sonavel
