#include "exchange/export_losses.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

#include "exchange/tag_names.h"
#include "sound/file_rates.h"
#include "sound/sound_texts.h"

namespace sonavel {
namespace {

using enum SoundFileKind;

enum class MarkersHeld : std::uint8_t { kNone, kPoints, kRegions };

struct KindHolds {
    SoundFileKind kind;
    std::string_view file;
    MarkersHeld markers;
    bool (*holdsTag)(std::string_view key);
    std::optional<ChunkFamily> chunks;
};

bool IsOneOf(std::span<const std::string_view> keys, std::string_view key) {
    return std::ranges::find(keys, key) != keys.end();
}

bool InInfo(std::string_view key) {
    return InfoOfKey(key).has_value();
}
bool InAiff(std::string_view key) {
    constexpr std::string_view kKeys[] = {"title", "artist", "comment", "copyright"};
    return IsOneOf(kKeys, key);
}
bool InStrings(std::string_view key) {
    constexpr std::string_view kKeys[] = {"title", "artist",  "album",
                                          "date",  "comment", "copyright"};
    return IsOneOf(kKeys, key);
}
bool InComments(std::string_view key) {
    return CommentOfKey(key).has_value();
}
bool Everywhere(std::string_view) {
    return true;
}
bool Nowhere(std::string_view) {
    return false;
}

constexpr KindHolds kKinds[] = {
    {kWav, "a WAV file", MarkersHeld::kRegions, InInfo, ChunkFamily::kRiff},
    {kRf64, "an RF64 file", MarkersHeld::kRegions, InInfo, ChunkFamily::kRiff},
    {kW64, "a W64 file", MarkersHeld::kNone, Nowhere, {}},
    {kAiff, "an AIFF file", MarkersHeld::kPoints, InAiff, ChunkFamily::kAiff},
    {kAu, "an AU file", MarkersHeld::kNone, InComments, {}},
    {kCaf, "a CAF file", MarkersHeld::kNone, InStrings, {}},
    {kFlac, "a FLAC file", MarkersHeld::kPoints, InComments, {}},
    {kOggVorbis, "an Ogg Vorbis file", MarkersHeld::kPoints, InComments, {}},
    {kOpus, "an Opus file", MarkersHeld::kPoints, InComments, {}},
    {kMp3, "an MP3 file", MarkersHeld::kRegions, Everywhere, {}},
};

std::string LostTags(const KindHolds& holds, const SoundExtras& extras) {
    std::string list;
    for (const SoundTag& tag : extras.tags)
        if (!holds.holdsTag(tag.key)) list += (list.empty() ? "" : ", ") + tag.key;
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

std::vector<std::string> LossesOf(SoundFileKind kind, std::uint32_t rate,
                                  const SoundExtras& extras) {
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
    if (const std::uint32_t written = WrittenRate(kind, rate); written != rate)
        losses.push_back("The sound is resampled to " + RateText(written));
    return losses;
}

}  // namespace sonavel
