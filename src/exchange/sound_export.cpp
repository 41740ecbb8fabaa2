#include "exchange/sound_export.h"

#include <algorithm>
#include <string>

#include "exchange/sound_frames.h"
#include "platform/failure_texts.h"

namespace sonavel {
namespace {

using enum SoundFileKind;

constexpr struct {
    std::string_view name;
    SoundFileKind kind;
} kNames[] = {
    {"wav", kWav}, {"aiff", kAiff}, {"aif", kAiff},      {"au", kAu},
    {"snd", kAu},  {"flac", kFlac}, {"ogg", kOggVorbis}, {"opus", kOpus},
    {"mp3", kMp3}, {"w64", kW64},   {"caf", kCaf},       {"rf64", kRf64},
};

EncodedDepth DeepestOf(SoundFileKind kind) {
    return kind == kFlac ? EncodedDepth::k24 : EncodedDepth::kFloat32;
}

EncodedDepth DepthOfBits(std::uint32_t bits, SoundFileKind kind) {
    if (bits <= 8) return EncodedDepth::k8;
    if (bits <= 16) return EncodedDepth::k16;
    return bits <= 24 ? EncodedDepth::k24 : DeepestOf(kind);
}

// The whole bits to which the sound has to be rounded before it is written; its own for none.
unsigned BitsBeforeWriting(const Sound& sound, EncodedDepth depth) {
    const unsigned wanted = depth == EncodedDepth::k8 ? 8 : depth == EncodedDepth::k16 ? 16 : 32;
    return sound.GetBits() > wanted ? wanted : sound.GetBits();
}

// The markers inside the part, with regions that end with it.
MarkerList MarkersOfPart(const Sound& sound, const FrameRange& frames) {
    MarkerList markers = sound.Markers();
    const bool reachesEnd = frames.end == sound.GetFrameCount();
    std::erase_if(markers.All(), [&](const Marker& marker) {
        const bool isBehind =
            marker.position > frames.end || (marker.position == frames.end && !reachesEnd);
        return marker.position < frames.start || isBehind;
    });
    for (Marker& marker : markers.All()) {
        marker.length = std::min(marker.length, frames.end - marker.position);
        marker.position -= frames.start;
        marker.sampleOffset = marker.position;
    }
    return markers;
}

// The part that is written, in the depth in which it is.
Result<Sound> PartOf(const Sound& sound, const FrameRange& frames, unsigned bits) {
    const std::uint64_t start = sound.ByteOffset(frames.start);
    const auto bytes = sound.Bytes().subspan(start, sound.ByteOffset(frames.end) - start);
    SoundBuffer samples;
    if (!bytes.empty() && !samples.AllocBuffer(bytes.size())) return Failed(failure::kMemory);
    std::ranges::copy(bytes, samples.Data());
    Sound part(sound.GetFormat(), std::move(samples), MarkersOfPart(sound, frames));
    if (bits != part.GetBits() && !part.ConvertBits(bits)) return Failed(failure::kMemory);
    return part;
}

}  // namespace

std::optional<SoundFileKind> ExportKindOf(std::string_view name) {
    for (const auto& known : kNames)
        if (known.name == name) return known.kind;
    return std::nullopt;
}

std::string_view ExportNameOf(SoundFileKind kind) {
    for (const auto& known : kNames)
        if (known.kind == kind) return known.name;
    return {};
}

std::optional<SoundFileKind> ExportKindOf(const std::filesystem::path& path) {
    std::string name = path.extension().string();
    if (name.empty()) return std::nullopt;
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return ExportKindOf(std::string_view(name).substr(1));
}

EncodedDepth ExportDepth(SoundFileKind kind, const Sound& sound,
                         const SoundFileDescription* origin) {
    if (origin && origin->depth == FileDepth::kInteger) return DepthOfBits(origin->bits, kind);
    if (origin && origin->depth == FileDepth::kFloat) return DeepestOf(kind);
    return DepthOfBits(sound.GetBits(), kind);
}

Outcome ExportSound(const std::filesystem::path& path, const Sound& sound,
                    const SoundExtras& extras, const ExportChoice& choice,
                    const SoundCodecs* codecs, const TransferHost& host) {
    const FrameRange frames = choice.frames.ClampedTo(sound.GetFrameCount());
    if (frames.IsEmpty() && sound.GetFrameCount() > 0)
        return Failed("There are no frames to export.");
    SoundExtras written = extras;
    if (choice.tags == ExportPart::kLeaveOut) written.tags.clear();
    const EncodeRequest request{
        .kind = choice.kind, .depth = choice.depth, .quality = choice.quality, .tags = {}};
    const unsigned bits = BitsBeforeWriting(sound, choice.depth);
    const bool isAll = frames.Frames() == sound.GetFrameCount() && bits == sound.GetBits();
    if (isAll && choice.markers == ExportPart::kWrite)
        return WriteForeignFile(path, sound, request, std::move(written), codecs, host);
    Result<Sound> part = PartOf(sound, frames, bits);
    if (!part) return part.Ended();
    if (choice.markers == ExportPart::kLeaveOut) part->Markers().Clear();
    return WriteForeignFile(path, *part, request, std::move(written), codecs, host);
}

}  // namespace sonavel
