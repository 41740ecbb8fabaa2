#include "sound/wav_markers.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string>

#include "sound/byte_order.h"

namespace sonavel {
namespace {

constexpr std::size_t kCuePointBytes = 24;
constexpr std::size_t kTextRecordBytes = 28;

using CuePoint = std::array<std::uint8_t, kCuePointBytes>;

std::optional<std::uint32_t> ReadWord(ByteCursor& cursor) {
    std::uint8_t bytes[4];
    if (!cursor.ReadAll(bytes)) return std::nullopt;
    return LoadLittle32(bytes);
}

Marker MarkerOf(const CuePoint& point) {
    Marker marker;
    marker.id = marker.labelId = LoadLittle32(&point[0]);
    marker.position = LoadLittle32(&point[4]);
    marker.chunkId = LoadLittle32(&point[8]);
    marker.chunkStart = LoadLittle32(&point[12]);
    marker.blockStart = LoadLittle32(&point[16]);
    marker.sampleOffset = LoadLittle32(&point[20]);
    return marker;
}

// False when the chunk cannot hold as many cue points as it says; the points that are there are
// read.
bool ReadCuePoints(ByteCursor& cursor, const RiffChunk& cue, std::vector<Marker>& markers) {
    const std::optional<std::uint32_t> announced = ReadWord(cursor);
    if (!announced) return false;
    std::uint32_t count = *announced;
    // Only a count that lies is held against the size of the chunk, which lies in some files.
    if (count > cursor.Remaining() / kCuePointBytes)
        count = std::min(count, cue.sizeBytes / std::uint32_t{kCuePointBytes});
    CuePoint point;
    while (markers.size() < count && cursor.ReadAll(point)) {
        markers.push_back(MarkerOf(point));
        markers.back().textId = static_cast<std::uint32_t>(markers.size());
    }
    return markers.size() == *announced;
}

// False, with the marker as it was, when there is no whole label.
bool ReadLabel(RiffReader& reader, const RiffChunk& list, Marker& marker) {
    const std::optional<RiffChunk> label = reader.Descend(kLabelChunk, list);
    if (!label) return false;
    const std::optional<std::uint32_t> id = ReadWord(reader.Cursor());
    if (!id || label->sizeBytes < 4) return false;
    const std::uint32_t length = label->sizeBytes - 4;
    if (length > reader.Cursor().Remaining()) return false;
    std::string text(length, '\0');
    if (!reader.Cursor().ReadAll({reinterpret_cast<std::uint8_t*>(text.data()), length}))
        return false;
    marker.labelId = *id;
    marker.name = text.substr(0, text.find('\0'));
    reader.Ascend(*label);
    return true;
}

// Labels belong to the markers in their order, whatever ids they name.
bool ReadLabels(RiffReader& reader, const RiffChunk& list, std::vector<Marker>& markers) {
    return std::ranges::all_of(markers,
                               [&](Marker& marker) { return ReadLabel(reader, list, marker); });
}

void StoreText(const std::uint8_t* record, Marker& marker) {
    marker.textId = LoadLittle32(record + 8);
    marker.length = LoadLittle32(record + 12);
    marker.purpose = LoadLittle32(record + 16);
    marker.countryAndLanguage = LoadLittle32(record + 20);
    marker.dialectAndCodePage = LoadLittle32(record + 24);
}

// Records lie one behind the other, their text ids ascending numbers of markers from 1. As the
// search runs forward only, the records of a list that has them before its labels are not found:
// intended, files written here lose their lengths by it.
void ReadTexts(RiffReader& reader, const RiffChunk& list, std::vector<Marker>& markers) {
    const std::optional<RiffChunk> first = reader.Descend(kTextChunk, list);
    if (!first) return;
    reader.Cursor().Seek(first->dataOffset - 8);
    std::uint32_t previous = 0;
    std::array<std::uint8_t, kTextRecordBytes> record;
    while (reader.Cursor().ReadAll(record) && LoadLittle32(record.data()) == kTextChunk) {
        const std::uint32_t textId = LoadLittle32(&record[8]);
        if (textId <= previous || textId > markers.size()) return;
        StoreText(record.data(), markers[textId - 1]);
        previous = textId;
    }
}

std::vector<std::uint8_t> BuildCue(const std::vector<Marker>& markers) {
    const auto count = static_cast<std::uint32_t>(markers.size());
    ByteBuilder cue;
    // The size of the points alone, without the count before them: intended, old readers expect it.
    cue.Text("cue ").Little32(24 * count).Little32(count);
    for (const Marker& marker : markers)
        cue.Little32(marker.id)
            .Little32(marker.position)
            .Little32(marker.chunkId)
            .Little32(marker.chunkStart)
            .Little32(marker.blockStart)
            .Little32(marker.sampleOffset);
    return cue.Bytes();
}

void AppendText(ByteBuilder& list, const Marker& marker) {
    // Dialect before country, the other way round than they are read: intended, both are 0 in every
    // marker made here.
    list.Text("ltxt")
        .Little32(20)
        .Little32(marker.textId)
        .Little32(marker.length)
        .Little32(marker.purpose)
        .Little32(marker.dialectAndCodePage)
        .Little32(marker.countryAndLanguage);
}

void AppendLabel(ByteBuilder& list, const Marker& marker) {
    // No pad byte behind a name of odd length: intended, as in the RIFF size.
    list.Text("labl")
        .Little32(static_cast<std::uint32_t>(marker.name.size() + 4))
        .Little32(marker.labelId)
        .Text(marker.name);
}

std::uint32_t ListSize(const std::vector<Marker>& markers) {
    std::size_t size = 4;
    for (const Marker& marker : markers) size += kTextRecordBytes + 12 + marker.name.size();
    return static_cast<std::uint32_t>(size);
}

std::vector<std::uint8_t> BuildList(const std::vector<Marker>& markers) {
    const std::uint32_t size = ListSize(markers);
    const std::uint32_t pad = size & 1;
    ByteBuilder list;
    list.Text("LIST").Little32(size + pad).Text("adtl");
    for (const Marker& marker : markers) AppendText(list, marker);
    for (const Marker& marker : markers) AppendLabel(list, marker);
    if (pad) list.Byte(0);
    return list.Bytes();
}

}  // namespace

bool ReadMarkers(RiffReader& reader, const RiffChunk& riff, MarkerList& markers) try {
    const std::optional<RiffChunk> cue = reader.Descend(kCueChunk, riff);
    if (!cue) return true;
    if (!ReadCuePoints(reader.Cursor(), *cue, markers.All())) return false;
    // The list may lie behind the end of the RIFF chunk, as it does in files written here.
    const std::optional<RiffChunk> list = reader.DescendForm(kListChunk, kAssociatedDataForm);
    if (!list || !ReadLabels(reader, *list, markers.All())) return false;
    ReadTexts(reader, *list, markers.All());
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

MarkerChunks BuildMarkerChunks(const MarkerList& markers) {
    return {BuildCue(markers.All()), BuildList(markers.All())};
}

}  // namespace sonavel
