// What is said of a foreign sound file when it is decoded or encoded, and in which samples its
// frames come and go.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sound/speakers.h"

namespace sonavel {

// In what frames are handed over, interleaved and in this machine's byte order. Floats have the
// nominal range of +-1; values beyond it are kept.
enum class FrameSamples : std::uint8_t { kUnsigned8, kSigned16, kFloat32 };

inline constexpr std::size_t BytesPerSample(FrameSamples samples) {
    return samples == FrameSamples::kUnsigned8 ? 1 : samples == FrameSamples::kSigned16 ? 2 : 4;
}

// The kinds of files that can be encoded; kOther stands for all that can only be decoded.
enum class SoundFileKind : std::uint8_t {
    kOther,
    kWav,
    kRf64,
    kW64,
    kAiff,
    kAu,
    kCaf,
    kFlac,
    kOggVorbis,
    kOpus,
    kMp3,
};
inline constexpr unsigned kSoundFileKindCount = static_cast<unsigned>(SoundFileKind::kMp3) + 1;

// How a file keeps a sample. kNone: the coding has no depth of its own, as lossy ones have none.
enum class FileDepth : std::uint8_t { kNone, kInteger, kFloat };

// kStated: the file says it; kEstimated: from its duration, for a progress bar.
enum class FrameCount : std::uint8_t { kUnknown, kEstimated, kStated };

struct SoundFileDescription {
    SoundFileKind kind = SoundFileKind::kOther;
    std::string format;  // "FLAC", "Ogg Vorbis"
    std::string coding;  // "IMA ADPCM"; empty where the format says it all
    FileDepth depth = FileDepth::kNone;
    std::uint32_t bits = 0;  // of a sample in the file, with kInteger and kFloat
    std::uint32_t rate = 0;  // frames a second
    std::uint32_t channels = 0;
    FrameCount counted = FrameCount::kUnknown;
    std::uint64_t frames = 0;
    FrameSamples samples = FrameSamples::kFloat32;
    std::vector<Speaker> speakers;  // one a channel, or none where the file does not say

    std::size_t BytesPerFrame() const { return BytesPerSample(samples) * channels; }
    bool operator==(const SoundFileDescription&) const = default;
};

// "title", "artist", "album", "date", "comment", "copyright", "track", "genre", or whatever the
// file calls it. Values are hostile bytes of the file, not always UTF-8.
struct SoundTag {
    std::string key;
    std::string value;

    bool operator==(const SoundTag&) const = default;
};

struct SoundChapter {
    std::uint64_t startFrame = 0;
    std::uint64_t frames = 0;  // 0 for a point
    std::string name;

    bool operator==(const SoundChapter&) const = default;
};

struct SoundFileHead {
    SoundFileDescription description;
    std::vector<SoundTag> tags;
    std::vector<SoundChapter> chapters;
};

// What a file of one program may carry: more of it is left out when it is read.
inline constexpr std::size_t kMostTagBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMostTagBytesOfFile = std::size_t{16} << 20;

// How the frames of a file came to their end.
enum class SoundCondition : std::uint8_t {
    kWhole,
    kCutShort,  // there are fewer frames than the file says
    kDamaged,   // the decoder met what it could not make sense of
};

struct DecodedSound {
    std::uint64_t frames = 0;          // that came
    std::uint64_t promisedFrames = 0;  // that the file says it has, where it was cut short; else 0
    SoundCondition condition = SoundCondition::kWhole;
    std::uint64_t silencedSamples = 0;  // not a number or infinite: they came as 0
};

// What is to be written. Lossy kinds have no depth; they take `quality`. Samples that the depth
// cannot hold are rounded to the nearest, so whoever wants dither sends what is dithered already.
enum class EncodedDepth : std::uint8_t { k8, k16, k24, kFloat32 };

struct EncodeRequest {
    SoundFileKind kind = SoundFileKind::kWav;
    EncodedDepth depth = EncodedDepth::k16;
    std::uint32_t quality = 5;  // 0 (smallest file) to 10 (best sound), of lossy kinds
    std::uint32_t rate = 0;
    std::uint32_t channels = 0;
    std::uint64_t frames = 0;
    FrameSamples samples = FrameSamples::kSigned16;
    // The keys "title", "artist", "album", "date", "comment" and "copyright"; others are left out,
    // and so is what the kind has no place for.
    std::vector<SoundTag> tags;

    std::size_t BytesPerFrame() const { return BytesPerSample(samples) * channels; }
};

inline constexpr std::uint32_t kBestQuality = 10;

}  // namespace sonavel
