#include "view/draw/first_difference.h"

#include <algorithm>
#include <cstring>

namespace sonavel {
namespace {

// Large enough for memcmp to run at the speed of memory, small enough to search byte by byte.
constexpr std::size_t kChunkBytes = 65536;

std::size_t FirstDifferentByte(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t start = 0; start < common; start += kChunkBytes) {
        const std::size_t length = std::min(kChunkBytes, common - start);
        if (std::memcmp(a.data() + start, b.data() + start, length) == 0) continue;
        const auto chunk = a.subspan(start, length);
        const auto place = std::mismatch(chunk.begin(), chunk.end(), b.begin() + start).first;
        return start + static_cast<std::size_t>(place - chunk.begin());
    }
    return common;
}

// The samples that the edit replaced, with what followed them, against those that it made.
std::uint64_t FirstDifferentByteOf(const EditRecord& record, const Sound& after) {
    const std::span<const std::uint8_t> old = record.samples.Bytes();
    const std::span<const std::uint8_t> now = after.Bytes().subspan(record.startByte);
    const std::span<const std::uint8_t> tail = now.subspan(record.bytesThere);
    std::uint64_t same = FirstDifferentByte(old, now);
    if (same == old.size()) same += FirstDifferentByte(tail, now.subspan(same));
    return record.startByte + same;
}

std::uint64_t FirstDifferentByteOf(const StoredRecord& stored, const Sound& after) {
    return stored.IsInMemory() ? FirstDifferentByteOf(stored.Record(), after)
                               : stored.Record().startByte;
}

}  // namespace

std::uint32_t FirstDifferentFrame(const MarkerList& before, const MarkerList& after) {
    const std::vector<Marker>& old = before.All();
    const std::vector<Marker>& now = after.All();
    const auto [was, is] = std::mismatch(old.begin(), old.end(), now.begin(), now.end());
    const bool removed = now.size() < old.size();
    if (removed && was != old.end()) return was->position;
    return is != now.end() ? is->position : 0;
}

std::uint32_t FirstDifferentFrame(const UndoStep& before, const Sound& after) {
    if (after.GetBlockAlign() == 0 || before.records.empty()) return 0;
    if (before.HoldsMarkersAlone())
        return FirstDifferentFrame(before.records.front().Record().markers, after.Markers());
    std::uint64_t first = after.GetDataSize();
    for (const StoredRecord& stored : before.records) {
        if (!(stored.Record().format == after.GetFormat())) return 0;
        first = std::min(first, stored.Record().startByte);
    }
    if (before.records.size() == 1) first = FirstDifferentByteOf(before.records.front(), after);
    return static_cast<std::uint32_t>(first / after.GetBlockAlign());
}

}  // namespace sonavel
