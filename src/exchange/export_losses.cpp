#include "exchange/export_losses.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

#include "exchange/tag_names.h"

namespace sonavel {
namespace {

using enum SoundFileKind;

enum class MarkersHeld : std::uint8_t { kNone, kPoints, kRegions };

struct KindHolds {
    SoundFileKind kind;
    std::string_view file;
    MarkersHeld markers;
    std::span<const std::string_view> tags;
    std::optional<ChunkFamily> chunks;
};

constexpr std::string_view kAll[] = {"title", "artist", "album", "date", "comment", "copyright"};
constexpr std::string_view kAiffTags[] = {"title", "artist", "comment", "copyright"};
constexpr std::string_view kMp3Tags[] = {"title", "artist", "album", "date", "comment"};

constexpr KindHolds kKinds[] = {
    {kWav, "a WAV file", MarkersHeld::kRegions, {}, ChunkFamily::kRiff},
    {kRf64, "an RF64 file", MarkersHeld::kRegions, {}, ChunkFamily::kRiff},
    {kW64, "a W64 file", MarkersHeld::kNone, {}, {}},
    {kAiff, "an AIFF file", MarkersHeld::kPoints, kAiffTags, ChunkFamily::kAiff},
    {kAu, "an AU file", MarkersHeld::kNone, {}, {}},
    {kCaf, "a CAF file", MarkersHeld::kNone, kAll, {}},
    {kFlac, "a FLAC file", MarkersHeld::kNone, kAll, {}},
    {kOggVorbis, "an Ogg Vorbis file", MarkersHeld::kNone, kAll, {}},
    {kOpus, "an Opus file", MarkersHeld::kNone, kAll, {}},
    {kMp3, "an MP3 file", MarkersHeld::kNone, kMp3Tags, {}},
};

bool HoldsTag(const KindHolds& holds, const std::string& key) {
    if (holds.chunks == ChunkFamily::kRiff) return InfoOfKey(key).has_value();
    return std::ranges::find(holds.tags, key) != holds.tags.end();
}

std::string LostTags(const KindHolds& holds, const SoundExtras& extras) {
    std::string list;
    for (const SoundTag& tag : extras.tags)
        if (!HoldsTag(holds, tag.key)) list += (list.empty() ? "" : ", ") + tag.key;
    return list.empty() ? list : "The tags " + list;
}

bool LosesRegions(const KindHolds& holds, const SoundExtras& extras) {
    const auto hasLength = [](const SoundChapter& marker) { return marker.frames != 0; };
    return holds.markers == MarkersHeld::kPoints && std::ranges::any_of(extras.markers, hasLength);
}

bool LosesChunks(const KindHolds& holds, const SoundExtras& extras) {
    return std::ranges::any_of(
        extras.chunks, [&](const ForeignChunk& chunk) { return chunk.family != holds.chunks; });
}

}  // namespace

std::vector<std::string> LossesOf(SoundFileKind kind, const SoundExtras& extras) {
    const auto* holds = std::ranges::find(kKinds, kind, &KindHolds::kind);
    if (holds == std::end(kKinds)) return {};
    std::vector<std::string> losses;
    const auto add = [&](const std::string& what) {
        losses.push_back(what + " cannot be written to " + std::string(holds->file));
    };
    if (holds->markers == MarkersHeld::kNone && !extras.markers.empty()) add("Markers");
    if (LosesRegions(*holds, extras)) add("The lengths of regions");
    if (const std::string tags = LostTags(*holds, extras); !tags.empty()) add(tags);
    if (LosesChunks(*holds, extras)) add("Chunks of another format");
    return losses;
}

}  // namespace sonavel
