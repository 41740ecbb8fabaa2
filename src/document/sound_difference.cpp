#include "document/sound_difference.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace sonavel {
namespace {

EditRecord Whole(const Sound& now, Sound& wanted) {
    EditRecord record{.reach = EditReach::kEverything};
    record.bytesThere = now.GetDataSize();
    record.bytesKept = wanted.GetDataSize();
    record.format = wanted.GetFormat();
    record.markers = wanted.Markers();
    PcmFormat none;
    // Of whole blocks nothing is copied, so this cannot fail.
    static_cast<void>(ExchangePiece(wanted, 0, record.bytesKept, record.samples, none));
    return record;
}

EditRecord Between(const Sound& now, const Sound& wanted) {
    const auto before = now.Bytes(), after = wanted.Bytes();
    const std::size_t common = std::min(before.size(), after.size());
    const auto first = std::mismatch(
        before.begin(), before.begin() + static_cast<std::ptrdiff_t>(common), after.begin());
    const auto start = static_cast<std::size_t>(first.first - before.begin());
    const auto behind = std::mismatch(before.rbegin(),
                                      before.rbegin() + static_cast<std::ptrdiff_t>(common - start),
                                      after.rbegin());
    const auto tail = static_cast<std::size_t>(behind.first - before.rbegin());
    EditRecord record{.reach = EditReach::kFrames};
    record.startByte = start;
    record.bytesThere = before.size() - start - tail;
    record.bytesKept = after.size() - start - tail;
    record.format = wanted.GetFormat();
    record.markers = wanted.Markers();
    return record;
}

}  // namespace

std::optional<EditRecord> DifferenceFrom(const Sound& now, Sound& wanted) {
    if (!HasSameFrames(now.GetFormat(), wanted.GetFormat())) return Whole(now, wanted);
    EditRecord record = Between(now, wanted);
    const bool sameSamples = record.bytesThere == 0 && record.bytesKept == 0;
    if (sameSamples && now.GetFormat() == wanted.GetFormat()) {
        if (now.Markers() == wanted.Markers()) return std::nullopt;
        EditRecord markers{.reach = EditReach::kMarkers};
        markers.markers = wanted.Markers();
        return markers;
    }
    if (record.bytesKept == 0) return record;
    if (!record.samples.AllocBuffer(record.bytesKept)) return Whole(now, wanted);
    std::memcpy(record.samples.Data(), wanted.Bytes().data() + record.startByte, record.bytesKept);
    return record;
}

Result<TakenOver> TakeOver(CSoundDoc& document, Sound& wanted, std::string_view stepName) {
    auto record = DifferenceFrom(document.Sound(), wanted);
    if (!record) return TakenOver::kNothing;
    const bool isWhole = record->reach == EditReach::kEverything;
    Outcome applied = document.ApplyRecord(stepName, *std::move(record));
    // A piece may need more room than there is; whole sounds change places and need none.
    if (!applied && !isWhole)
        applied = document.ApplyRecord(stepName, Whole(document.Sound(), wanted));
    if (!applied) return applied;
    return TakenOver::kEdit;
}

}  // namespace sonavel
