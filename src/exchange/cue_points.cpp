#include "exchange/cue_points.h"

#include <algorithm>
#include <utility>

#include "exchange/foreign_text.h"

namespace sonavel {
namespace {

constexpr std::size_t kPointBytes = 24;
constexpr std::size_t kSampleOffset = 20;
constexpr std::size_t kRegionBytes = 20;
constexpr FourCc kNoteChunk = MakeFourCc("note");

std::string TextOf(const ChunkFields& content, std::size_t from) {
    return Utf8FromUnknown(content.Bytes(from, kMostMarkerNameBytes));
}

}  // namespace

void CuePoints::AddPoints(const ChunkFields& cue, ExtrasKeeper& keeper) {
    const std::uint32_t stated = cue.U32(0);
    const std::size_t there = cue.Size() > 4 ? (cue.Size() - 4) / kPointBytes : 0;
    if (there < stated) keeper.Remark("The list of markers is cut short.");
    const std::size_t room = kMostMarkers - std::min(points_.size(), kMostMarkers);
    const std::size_t count = std::min({std::size_t{stated}, there, room});
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = 4 + kPointBytes * i;
        points_.push_back({cue.U32(at), cue.U32(at + kSampleOffset)});
    }
}

void CuePoints::AddText(FourCc id, const ChunkFields& content) {
    if (content.Size() < 4 || texts_.size() == kMostMarkers) return;
    Text& text = texts_[content.U32(0)];
    if (id == kLabelChunk) text.label = TextOf(content, 4);
    if (id == kNoteChunk && text.note.empty()) text.note = TextOf(content, 4);
    if (id != kTextChunk || content.Size() < 8) return;
    text.frames = content.U32(4);
    if (text.note.empty()) text.note = TextOf(content, kRegionBytes);
}

void CuePoints::AddTexts(std::span<const std::uint8_t> list, ByteOrder order,
                         ExtrasKeeper& keeper) {
    FileRemarks remarks;
    for (const ChunkPlace& place : MapInnerChunks(list, 4, order, remarks)) {
        const auto content = list.subspan(static_cast<std::size_t>(place.dataOffset),
                                          static_cast<std::size_t>(place.sizeBytes));
        AddText(place.id, {content, order});
    }
    keeper.Remark(remarks);
}

void CuePoints::HandOver(ExtrasKeeper& keeper) {
    for (const Point& point : std::exchange(points_, {})) {
        const auto found = texts_.find(point.id);
        const Text text = found != texts_.end() ? found->second : Text();
        keeper.AddMarker({point.frame, text.frames, text.label.empty() ? text.note : text.label});
    }
}

}  // namespace sonavel
