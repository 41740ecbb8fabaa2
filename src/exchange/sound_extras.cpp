#include "exchange/sound_extras.h"

#include <algorithm>
#include <utility>

#include "exchange/foreign_text.h"
#include "platform/code_page_949.h"

namespace sonavel {
namespace {

constexpr std::string_view kTooMuch = "Tags or chunks beyond 16 MiB are left out.";
constexpr std::string_view kTooLarge = "A chunk of more than 1 MiB is left out.";
constexpr std::string_view kTooManyMarkers = "Markers beyond the first 65,536 are left out.";
constexpr std::string_view kTooManyTags = "Tags beyond the first 1,000 are left out.";
constexpr std::string_view kBehindEnd = "Markers behind the end of the sound are left out.";

}  // namespace

void ExtrasKeeper::Remark(std::string_view sentence) {
    extras_.remarks.AddMissing(sentence);
}

void ExtrasKeeper::Remark(const FileRemarks& remarks) {
    extras_.remarks.Add(remarks);
}

bool ExtrasKeeper::Spend(std::size_t bytes) {
    if (bytes > left_) {
        Remark(kTooMuch);
        return false;
    }
    left_ -= bytes;
    return true;
}

void ExtrasKeeper::AddMarker(SoundChapter marker) {
    if (extras_.markers.size() == kMostMarkers) return Remark(kTooManyMarkers);
    marker.name.resize(Utf8Beginning(marker.name, kMostMarkerNameBytes).size());
    if (Spend(marker.name.size())) extras_.markers.push_back(std::move(marker));
}

bool ExtrasKeeper::HasTag(std::string_view key) const {
    return std::ranges::find(extras_.tags, key, &SoundTag::key) != extras_.tags.end();
}

void ExtrasKeeper::AddTag(std::string_view key, std::string value) {
    if (value.empty() || key.empty()) return;
    if (extras_.tags.size() == kMostTags) return Remark(kTooManyTags);
    if (HasTag(key)) return;
    value.resize(Utf8Beginning(value, kMostTagBytes).size());
    if (Spend(value.size() + key.size())) extras_.tags.push_back({std::string(key), value});
}

bool ExtrasKeeper::HasRoomFor(std::uint64_t chunkBytes) {
    if (chunkBytes > kMostTagBytes)
        Remark(kTooLarge);
    else if (chunkBytes > left_)
        Remark(kTooMuch);
    else
        return true;
    return false;
}

void ExtrasKeeper::AddChunk(ForeignChunk chunk) {
    if (Spend(chunk.bytes.size())) extras_.chunks.push_back(std::move(chunk));
}

SoundExtras ExtrasKeeper::Take() {
    std::ranges::stable_sort(extras_.markers, {}, &SoundChapter::startFrame);
    return std::exchange(extras_, {});
}

MarkerList MarkersOf(SoundExtras& extras, std::uint32_t frames) {
    MarkerList list;
    for (const SoundChapter& marker : extras.markers) {
        if (marker.startFrame > frames) {
            extras.remarks.AddMissing(kBehindEnd);
            continue;
        }
        const auto position = static_cast<std::uint32_t>(marker.startFrame);
        if (marker.frames > frames - position) extras.remarks.AddMissing(kBehindEnd);
        const auto length =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(marker.frames, frames - position));
        list.Add(position, marker.name, length);
    }
    return list;
}

std::vector<SoundChapter> ChaptersOf(const MarkerList& markers) {
    std::vector<SoundChapter> chapters;
    for (const Marker& marker : markers.All())
        chapters.push_back({marker.position, marker.length, DisplayText(marker.name)});
    std::ranges::stable_sort(chapters, {}, &SoundChapter::startFrame);
    return chapters;
}

}  // namespace sonavel
