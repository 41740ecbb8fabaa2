#include "document/sound_difference.h"

#include <algorithm>
#include <new>
#include <utility>

namespace sonavel {
namespace {

EditRecord DifferingBytes(const Sound& now, const Sound& wanted) {
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
    record.bytesThere = after.size() - start - tail;
    record.bytesKept = before.size() - start - tail;
    return record;
}

std::optional<EditRecord> DifferingPlace(const Sound& now, const Sound& wanted) {
    if (!HasSameFrames(now.GetFormat(), wanted.GetFormat()))
        return EditRecord{.reach = EditReach::kEverything,
                          .bytesThere = wanted.GetDataSize(),
                          .bytesKept = now.GetDataSize()};
    EditRecord record = DifferingBytes(now, wanted);
    const bool sameSamples = record.bytesThere == 0 && record.bytesKept == 0;
    if (!sameSamples || now.GetFormat() != wanted.GetFormat()) return record;
    if (now.Markers() == wanted.Markers()) return std::nullopt;
    return EditRecord{.reach = EditReach::kMarkers};
}

}  // namespace

std::optional<EditRecord> DifferenceBetween(const Sound& now, const Sound& wanted) {
    std::optional<EditRecord> record = DifferingPlace(now, wanted);
    if (!record) return std::nullopt;
    record->format = now.GetFormat();
    record->markers = now.Markers();
    return record;
}

Result<TakingOver> TakingOver::Prepare(CSoundDoc& document, Sound& wanted,
                                       std::string_view stepName) try {
    TakingOver taking(document, wanted);
    std::optional<EditRecord> record = DifferenceBetween(document.Sound(), wanted);
    if (!record) return taking;
    taking.firstByte_ = record->startByte;
    Result<SoundEdit> edit = document.BeginTakingOver(stepName, *std::move(record));
    if (!edit) return edit.Ended();
    taking.edit_ = *std::move(edit);
    return taking;
} catch (const std::bad_alloc&) {
    return Failed(failure::kMemory);
}

void TakingOver::Apply() {
    if (!edit_) return;
    edit_->ReplaceSound(std::move(*wanted_));
    edit_->CommitSurely(FrameOfByte(document_->Sound(), firstByte_));
}

}  // namespace sonavel
